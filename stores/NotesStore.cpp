#include "stores/NotesStore.h"

#include "base/text.h"
#include "platform/AtomicFile.h"

#include <array>
#include <fstream>
#include <iterator>
#include <optional>
#include <system_error>
#include <utility>

namespace {

constexpr std::string_view lineBreak = "\r\n";

/// What stands for a line break within a note, since a line break ends the note.
constexpr std::string_view blanks = "                                                       ";
static_assert(blanks.size() == 55);

bool isBlank(std::string_view text) {
    return text.find_first_not_of(' ') == std::string_view::npos;
}

/// The line at the head of `rest`, which begins behind it afterwards. A lone CR ends a line as CR
/// LF does, and a lone LF does not.
std::string_view takeLine(std::string_view& rest) {
    const std::string_view line = rest.substr(0, rest.find('\r'));
    rest.remove_prefix(line.size());
    rest.remove_prefix(rest.starts_with(lineBreak) ? lineBreak.size() : rest.empty() ? 0 : 1);
    return line;
}

/// What the file holds; nothing when it cannot be read to its end.
std::optional<std::string> contentOf(const std::filesystem::path& path) {
    // Opening something else, such as a pipe, might never come to an end.
    std::error_code unknown;
    if (!std::filesystem::is_regular_file(path, unknown)) return std::nullopt;
    std::ifstream stream(path, std::ios::binary);
    std::string content;
    std::array<char, 65536> part{};
    while (stream) {
        stream.read(part.data(), part.size());
        content.append(part.data(), static_cast<std::size_t>(stream.gcount()));
    }
    if (!stream.eof()) return std::nullopt;
    return content;
}

/// Whether nothing is there; unlike a file that cannot be looked at.
bool isMissing(const std::filesystem::path& path) {
    std::error_code unknown;
    return std::filesystem::status(path, unknown).type() == std::filesystem::file_type::not_found;
}

}  // namespace

NotesStore::NotesStore(std::filesystem::path path, Event<std::string_view> onTrouble)
    : path(std::move(path)), onTrouble(std::move(onTrouble)) {}

void NotesStore::load() {
    notes.clear();
    removeLeftovers(path);
    const auto content = contentOf(path);
    unread = !content && !isMissing(path);
    for (std::string_view rest = content ? *content : std::string_view(); !rest.empty();) {
        std::string note = replaceAll(takeLine(rest), blanks, lineBreak);
        if (!isBlank(note)) notes.push_back(std::move(note));
    }
}

void NotesStore::savenotes() {
    if (unread && !isMissing(path)) {
        reportUnsaved("what the file holds could not be read and would be lost",
                      "move the file to another place");
        return;
    }
    unread = false;
    std::string content;
    for (const std::string& note : notes) {
        content.append(replaceAll(note, lineBreak, blanks)).append(lineBreak);
    }
    content.append(lineBreak);
    if (const auto reason = replaceFile(path, content)) {
        reportUnsaved(*reason, "make room on the disk, or make the file and its folder writable");
    }
}

void NotesStore::reportUnsaved(const std::string& reason, const std::string& remedy) const {
    onTrouble("The notes could not be saved to " + path.string() + ": " + reason +
              ". They are kept until Cobweave ends; " + remedy +
              ", and they are saved at the next change");
}

void NotesStore::add(std::string_view text) {
    notes.emplace_back(text);
    added();
}

void NotesStore::remove(std::size_t index) {
    if (index < notes.size())
        notes.erase(std::next(notes.begin(), static_cast<std::ptrdiff_t>(index)));
}

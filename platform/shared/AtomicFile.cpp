#include "platform/AtomicFile.h"

#include "platform/shared/systemFiles.h"

#include <algorithm>
#include <iterator>
#include <random>
#include <system_error>

namespace {

namespace fs = std::filesystem;

constexpr std::string_view namePrefix = ".cobweave-";
constexpr std::string_view digits = "0123456789abcdef";
constexpr std::size_t nameDigits = 32;

/// A name that nobody can foresee, so that nobody can have put a file of theirs under it.
std::string newName() {
    std::random_device random;
    std::uniform_int_distribution<std::size_t> digit(0, digits.size() - 1);
    std::string name(namePrefix);
    std::generate_n(std::back_inserter(name), nameDigits, [&] { return digits[digit(random)]; });
    return name;
}

bool isOfNewName(std::string_view name) {
    return name.size() == namePrefix.size() + nameDigits && name.starts_with(namePrefix) &&
           name.find_first_not_of(digits, namePrefix.size()) == std::string_view::npos;
}

}  // namespace

std::optional<std::string> replaceFile(const fs::path& path, std::string_view content) {
    fs::path place = path;
    if (auto trouble = systemFiles::followLinks(place)) return trouble;
    if (auto trouble = systemFiles::makeFolder(place.parent_path())) return trouble;
    const auto file = systemFiles::makeNewFile(place);
    if (auto trouble = file->examineOld()) return trouble;
    if (auto trouble = file->write(newName(), content)) return trouble;
    return file->putInPlace();
}

void removeLeftovers(const fs::path& path) {
    fs::path place = path;
    if (systemFiles::followLinks(place)) return;
    const fs::path folder = place.parent_path();
    std::error_code error;
    for (fs::directory_iterator entry(folder.empty() ? "." : folder, error), end;
         !error && entry != end; entry.increment(error)) {
        if (isOfNewName(entry->path().filename().string())) systemFiles::removeUnused(*entry);
    }
}

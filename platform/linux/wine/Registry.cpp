#include "platform/Registry.h"

#include "base/FileStamp.h"
#include "base/text.h"
#include "platform/linux/Folders.h"

#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <system_error>

namespace {

/// The key that a line such as "[Software\\Wine\\Fonts] 1700000000" begins, in small letters and
/// with single backslashes; empty for any other line.
std::string keyOf(std::string_view line) {
    if (!line.starts_with('[')) return {};
    std::string key;
    for (std::size_t at = 1; at < line.size() && line[at] != ']'; ++at) {
        if (line[at] == '\\' && at + 1 < line.size()) ++at;
        key += line[at];
    }
    return lowerCase(key);
}

/// The current user's part of the registry of the Wine prefix in use, which Wine keeps as text.
class WineRegistry final : public Registry {
public:
    [[nodiscard]] bool currentUserHasKey(std::string_view path) override {
        if (stamp.mayHaveChanged()) read();
        const std::string wanted = lowerCase(path);
        if (keys.contains(wanted)) return true;
        // A key that only holds others has no line of its own.
        const std::string inside = wanted + '\\';
        const auto next = keys.lower_bound(inside);
        return next != keys.end() && next->starts_with(inside);
    }

private:
    void read() {
        std::ifstream lines(file);
        std::error_code unknown;
        if (!lines && std::filesystem::exists(file, unknown)) {
            // It cannot be opened now: what was known holds, and the next question tries again.
            stamp = FileStamp(file);
            return;
        }
        keys.clear();
        for (std::string line; std::getline(lines, line);) {
            if (std::string key = keyOf(line); !key.empty()) keys.insert(std::move(key));
        }
    }

    std::filesystem::path file = folders::winePrefix() / "user.reg";
    FileStamp stamp{file};
    std::set<std::string> keys;
};

}  // namespace

std::unique_ptr<Registry> makeRegistry() { return std::make_unique<WineRegistry>(); }

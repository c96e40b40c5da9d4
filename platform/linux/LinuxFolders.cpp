#include "platform/linux/LinuxFolders.h"
#include "platform/Folders.h"

#include <cstdlib>
#include <optional>
#include <system_error>

#include <fcntl.h>
#include <pwd.h>
#include <unistd.h>

namespace {

/// The value of a variable, where it is an absolute path; a relative one does not count.
std::filesystem::path absoluteFrom(const char* variable) {
    const char* const value = std::getenv(variable);
    const std::filesystem::path path = value == nullptr ? "" : value;
    return path.is_absolute() ? path : std::filesystem::path();
}

std::filesystem::path home() {
    if (auto path = absoluteFrom("HOME"); !path.empty()) return path;
    const passwd* const user = getpwuid(getuid());
    return user == nullptr ? "/" : user->pw_dir;
}

bool allows(const std::filesystem::path& path, int rights) {
    return faccessat(AT_FDCWD, path.c_str(), rights, AT_EACCESS) == 0;
}

/// When the notes in the folder were last changed; nothing without any that this user can read.
std::optional<std::filesystem::file_time_type> changeOfNotes(const std::filesystem::path& folder) {
    const std::filesystem::path file = folder / "notes.cwv";
    if (!allows(file, R_OK)) return std::nullopt;
    std::error_code error;
    const auto time = std::filesystem::last_write_time(file, error);
    return error ? std::nullopt : std::optional(time);
}

}  // namespace

std::filesystem::path folders::settings() {
    if (auto path = absoluteFrom("XDG_CONFIG_HOME"); !path.empty()) return path;
    return home() / ".config";
}

std::filesystem::path folders::winePrefix() {
    if (auto path = absoluteFrom("WINEPREFIX"); !path.empty()) return path;
    return home() / ".wine";
}

std::filesystem::path folders::notes() {
    std::error_code unknown;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", unknown);
    auto data = absoluteFrom("XDG_DATA_HOME");
    if (data.empty()) data = home() / ".local" / "share";
    return notesIn(program.parent_path(), data / "cobweave");
}

std::filesystem::path folders::notesIn(const std::filesystem::path& program,
                                       const std::filesystem::path& data) {
    if (program.empty()) return data;
    const auto programChange = changeOfNotes(program);
    const auto dataChange = changeOfNotes(data);
    // No notes are older than any.
    if (programChange != dataChange) return programChange > dataChange ? program : data;
    // The folder is opened too, when a file in it is replaced.
    return allows(program, R_OK | W_OK | X_OK) ? program : data;
}

#include "platform/linux/Folders.h"
#include "platform/Folders.h"

#include <cstdlib>
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

/// Reading counts too: the folder is opened when a file in it is replaced. An empty path is no
/// folder.
bool canBeWritten(const std::filesystem::path& folder) {
    return faccessat(AT_FDCWD, folder.c_str(), R_OK | W_OK | X_OK, AT_EACCESS) == 0;
}

/// The folder of the program; empty where it is not known.
std::filesystem::path programFolder() {
    std::error_code unknown;
    return std::filesystem::read_symlink("/proc/self/exe", unknown).parent_path();
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
    const auto program = programFolder();
    return notesIn(isShared(program) ? "" : program, userData());
}

std::filesystem::path folders::userData() {
    auto data = absoluteFrom("XDG_DATA_HOME");
    if (data.empty()) data = home() / ".local" / "share";
    return data / "cobweave";
}

std::filesystem::path folders::notesIn(const std::filesystem::path& program,
                                       const std::filesystem::path& data) {
    return canBeWritten(program) ? program : data;
}

bool folders::isShared(const std::filesystem::path& program) {
    const char* const any = "button.swf";
    std::error_code unreadable;
    return movieFor(program, any) != program / any &&
           std::filesystem::exists(movieFor(program, any), unreadable);
}

std::filesystem::path folders::movie(const char* name) { return movieFor(programFolder(), name); }

std::filesystem::path folders::movieFor(const std::filesystem::path& program, const char* name) {
    std::error_code unreadable;
    if (std::filesystem::exists(program / name, unreadable)) return program / name;
    return program.parent_path() / "share" / "cobweave" / name;
}

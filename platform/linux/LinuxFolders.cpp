#include "platform/linux/LinuxFolders.h"
#include "platform/Folders.h"

#include <cstdlib>

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

}  // namespace

std::filesystem::path folders::settings() {
    if (auto path = absoluteFrom("XDG_CONFIG_HOME"); !path.empty()) return path;
    return home() / ".config";
}

std::filesystem::path folders::winePrefix() {
    if (auto path = absoluteFrom("WINEPREFIX"); !path.empty()) return path;
    return home() / ".wine";
}

#include "platform/Folders.h"

#include "platform/windows/win32.h"

#include <array>
#include <cstdlib>
#include <string>

#include <shlobj.h>

namespace {

std::filesystem::path programFolder() {
    constexpr DWORD longestPath = 32768;
    std::wstring file(longestPath, L'\0');
    file.resize(GetModuleFileNameW(nullptr, file.data(), longestPath));
    return std::filesystem::path(file).parent_path();
}

/// A folder of this user: where the variable says, else where the system does; the program's own
/// where neither does.
std::filesystem::path userFolder(const wchar_t* variable, const KNOWNFOLDERID& known) {
    const wchar_t* const value = _wgetenv(variable);
    if (value != nullptr && std::filesystem::path(value).is_absolute()) return value;
    wchar_t* found = nullptr;
    std::filesystem::path folder;
    if (SHGetKnownFolderPath(known, KF_FLAG_DONT_VERIFY, nullptr, &found) == S_OK) folder = found;
    CoTaskMemFree(found);
    return folder.empty() ? programFolder() : folder;
}

/// By making a file, since rights alone do not decide it.
bool canBeWritten(const std::filesystem::path& folder) {
    const auto probe = folder / (".cobweave-" + std::to_string(GetCurrentProcessId()));
    const HANDLE file = CreateFileW(probe.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW,
                                    FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    CloseHandle(file);
    return true;
}

}  // namespace

std::filesystem::path folders::settings() {
    return userFolder(L"APPDATA", FOLDERID_RoamingAppData);
}

std::filesystem::path folders::notes() {
    const auto program = programFolder();
    if (canBeWritten(program)) return program;
    return userFolder(L"LOCALAPPDATA", FOLDERID_LocalAppData) / "Cobweave";
}

std::filesystem::path folders::movie(const char* name) { return programFolder() / name; }

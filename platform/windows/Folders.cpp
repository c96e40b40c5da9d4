#include "platform/Folders.h"

#include "platform/windows/win32.h"

#include <string>

#include <shlobj.h>

namespace {

constexpr DWORD longestPath = 32768;

std::filesystem::path programFolder() {
    std::wstring file(longestPath, L'\0');
    file.resize(GetModuleFileNameW(nullptr, file.data(), longestPath));
    return std::filesystem::path(file).parent_path();
}

/// The value of a variable, where it is an absolute path; a relative one does not count. The
/// runtime library would give it without the letters that the machine's code page lacks.
std::filesystem::path absoluteFrom(const wchar_t* variable) {
    std::wstring value(longestPath, L'\0');
    const DWORD size = GetEnvironmentVariableW(variable, value.data(), longestPath);
    value.resize(size < longestPath ? size : 0);
    const std::filesystem::path path = value;
    return path.is_absolute() ? path : std::filesystem::path();
}

/// A folder of this user: where the variable says, else where the system does; the program's own
/// where neither does.
std::filesystem::path userFolder(const wchar_t* variable, const KNOWNFOLDERID& known) {
    if (auto path = absoluteFrom(variable); !path.empty()) return path;
    wchar_t* found = nullptr;
    std::filesystem::path folder;
    if (SHGetKnownFolderPath(known, KF_FLAG_DONT_VERIFY, nullptr, &found) == S_OK) folder = found;
    CoTaskMemFree(found);
    return folder.empty() ? programFolder() : folder;
}

/// Makes a file to find out, since rights alone do not decide it.
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
    return notesIn(programFolder(),
                   userFolder(L"LOCALAPPDATA", FOLDERID_LocalAppData) / "Cobweave");
}

std::filesystem::path folders::notesIn(const std::filesystem::path& program,
                                       const std::filesystem::path& data) {
    return canBeWritten(program) ? program : data;
}

std::filesystem::path folders::movie(const char* name) { return programFolder() / name; }

#include "platform/shared/systemFiles.h"

#include "platform/windows/wideText.h"
#include "platform/windows/win32.h"

#include <algorithm>
#include <system_error>
#include <vector>

namespace {

namespace fs = std::filesystem;
using systemFiles::Trouble;

/// A handle that is closed with its owner.
class Handle {
public:
    explicit Handle(HANDLE handle) : handle(handle) {}
    ~Handle() {
        if (isValid()) CloseHandle(handle);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    [[nodiscard]] bool isValid() const { return handle != INVALID_HANDLE_VALUE; }
    [[nodiscard]] HANDLE get() const { return handle; }

private:
    HANDLE handle;
};

constexpr DWORD sharedByAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

Trouble lastTrouble() { return wideText::describe(GetLastError()); }

/// Makes a call that fails for a moment while a virus scanner or an indexer has the file open.
template <typename Call>
bool retryWhileShared(Call&& call) {
    constexpr int attempts = 20;
    constexpr DWORD pause = 10;
    for (int attempt = 1;; ++attempt) {
        if (call()) return true;
        const DWORD error = GetLastError();
        const bool isTaken = error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED ||
                             error == ERROR_LOCK_VIOLATION;
        if (!isTaken || attempt == attempts) return false;
        Sleep(pause);
        SetLastError(error);
    }
}

/// Lets the same users do the same with another file, where the system lets us.
void copyRights(const fs::path& from, const fs::path& to) {
    DWORD size = 0;
    GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<char> rights(size);
    if (GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size) !=
        0) {
        SetFileSecurityW(to.c_str(), DACL_SECURITY_INFORMATION, rights.data());
    }
}

class WindowsNewFile final : public systemFiles::NewFile {
public:
    explicit WindowsNewFile(const fs::path& old) : old(old) {}
    ~WindowsNewFile() override {
        if (isUnfinished) DeleteFileW(path.c_str());
    }

    [[nodiscard]] Trouble examineOld() override {
        const DWORD attributes = GetFileAttributesW(old.c_str());
        if (attributes == INVALID_FILE_ATTRIBUTES) {
            return GetLastError() == ERROR_FILE_NOT_FOUND ? std::nullopt : lastTrouble();
        }
        if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return "It is a folder";
        HANDLE opened = INVALID_HANDLE_VALUE;
        // A new file could take its place, but whoever took the right away did not mean that.
        const bool isOpen = retryWhileShared([&] {
            opened = CreateFileW(old.c_str(), GENERIC_WRITE, sharedByAll, nullptr, OPEN_EXISTING, 0,
                                 nullptr);
            return opened != INVALID_HANDLE_VALUE;
        });
        if (!isOpen) return lastTrouble();
        const Handle file(opened);
        if (GetFileType(file.get()) != FILE_TYPE_DISK) return "Not a file";
        isOldThere = true;
        return std::nullopt;
    }
    /// Writes to the disk. Nobody else has the file meanwhile, so nobody takes it for a leftover.
    [[nodiscard]] Trouble write(const std::string& name, std::string_view content) override {
        path = old.parent_path() / name;
        const Handle file(
            CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
        if (!file.isValid()) return lastTrouble();
        isUnfinished = true;
        constexpr std::size_t mostAtOnce = std::size_t{1} << 20U;
        while (!content.empty()) {
            DWORD written = 0;
            const auto size = static_cast<DWORD>(std::min(content.size(), mostAtOnce));
            if (WriteFile(file.get(), content.data(), size, &written, nullptr) == 0) {
                return lastTrouble();
            }
            content.remove_prefix(written);
        }
        if (FlushFileBuffers(file.get()) == 0) return lastTrouble();
        return std::nullopt;
    }
    /// Renames once. What replaces a file in more steps has states between them.
    [[nodiscard]] Trouble putInPlace() override {
        if (isOldThere) copyRights(old, path);
        const bool isInPlace = retryWhileShared([&] {
            return MoveFileExW(path.c_str(), old.c_str(),
                               MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
        });
        if (!isInPlace) return lastTrouble();
        isUnfinished = false;
        return std::nullopt;
    }

private:
    const fs::path old;
    bool isOldThere = false;
    fs::path path;
    bool isUnfinished = false;
};

}  // namespace

Trouble systemFiles::followLinks(fs::path& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
        return std::nullopt;
    }
    const Handle file(CreateFileW(path.c_str(), 0, sharedByAll, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!file.isValid()) return lastTrouble();
    constexpr DWORD longestPath = 32768;
    std::wstring real(longestPath, L'\0');
    const DWORD size = GetFinalPathNameByHandleW(file.get(), real.data(), longestPath, 0);
    if (size == 0 || size >= longestPath) return lastTrouble();
    real.resize(size);
    path = real;
    return std::nullopt;
}

Trouble systemFiles::makeFolder(const fs::path& folder) {
    std::error_code error;
    if (!folder.empty()) fs::create_directories(folder, error);
    if (error) return wideText::describe(static_cast<DWORD>(error.value()));
    return std::nullopt;
}

void systemFiles::removeUnused(const fs::path& path) {
    // What a process is at work on cannot be opened.
    const Handle file(CreateFileW(path.c_str(), DELETE, 0, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT,
                                  nullptr));
}

std::unique_ptr<systemFiles::NewFile> systemFiles::makeNewFile(const fs::path& old) {
    return std::make_unique<WindowsNewFile>(old);
}

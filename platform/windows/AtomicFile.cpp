#include "platform/AtomicFile.h"
#include "platform/windows/wideText.h"
#include "platform/windows/win32.h"

#include <algorithm>
#include <random>
#include <stdexcept>
#include <system_error>
#include <vector>

namespace {

namespace fs = std::filesystem;

/// Why the file cannot be replaced. It does not leave this source.
class Trouble : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
    explicit Trouble(DWORD error) : Trouble(wideText::describe(error)) {}
};

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

/// Makes a call that fails for a moment while a virus scanner or an indexer has the file.
template <typename Call>
bool untilNobodyElseHasIt(Call&& call) {
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

/// What a link leads to, or the path itself.
fs::path target(const fs::path& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
        return path;
    }
    const Handle file(CreateFileW(path.c_str(), 0, sharedByAll, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!file.isValid()) throw Trouble(GetLastError());
    constexpr DWORD longestPath = 32768;
    std::wstring real(longestPath, L'\0');
    const DWORD size = GetFinalPathNameByHandleW(file.get(), real.data(), longestPath, 0);
    if (size == 0 || size >= longestPath) throw Trouble(GetLastError());
    real.resize(size);
    return real;
}

/// Whether a file is there. One that is not to be replaced is a trouble.
bool isThere(const fs::path& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        const DWORD error = GetLastError();
        if (error == ERROR_FILE_NOT_FOUND) return false;
        throw Trouble(error);
    }
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) throw Trouble("It is a folder");
    HANDLE opened = INVALID_HANDLE_VALUE;
    // A new file could take its place, but whoever took the right away did not mean that.
    untilNobodyElseHasIt([&] {
        opened = CreateFileW(path.c_str(), GENERIC_WRITE, sharedByAll, nullptr, OPEN_EXISTING, 0,
                             nullptr);
        return opened != INVALID_HANDLE_VALUE;
    });
    const DWORD error = GetLastError();
    const Handle file(opened);
    if (!file.isValid()) throw Trouble(error);
    if (GetFileType(file.get()) != FILE_TYPE_DISK) throw Trouble("Not a file");
    return true;
}

constexpr std::string_view namePrefix = ".cobweave-";
constexpr std::string_view digits = "0123456789abcdef";
constexpr std::size_t nameDigits = 32;

/// A name that nobody can foresee.
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

/// Who may do what with the old file, for the new one, where the system lets us.
void copyRights(const fs::path& from, const fs::path& to) {
    DWORD size = 0;
    GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<char> rights(size);
    if (GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size) !=
        0) {
        SetFileSecurityW(to.c_str(), DACL_SECURITY_INFORMATION, rights.data());
    }
}

/// The new content under a name of its own, which is gone with this object.
class NewFile {
public:
    explicit NewFile(const fs::path& folder) : path(folder / newName()) {}
    ~NewFile() {
        if (!inPlace) DeleteFileW(path.c_str());
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    /// To the disk. Nobody else has it meanwhile, so nobody takes it for a leftover.
    void write(std::string_view content) const {
        const Handle file(
            CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
        if (!file.isValid()) throw Trouble(GetLastError());
        constexpr std::size_t mostAtOnce = std::size_t{1} << 20U;
        while (!content.empty()) {
            DWORD written = 0;
            const auto size = static_cast<DWORD>(std::min(content.size(), mostAtOnce));
            if (WriteFile(file.get(), content.data(), size, &written, nullptr) == 0) {
                throw Trouble(GetLastError());
            }
            content.remove_prefix(written);
        }
        if (FlushFileBuffers(file.get()) == 0) throw Trouble(GetLastError());
    }
    void resemble(const fs::path& old) const { copyRights(old, path); }
    /// By one renaming. What replaces a file in more steps has states between them.
    void putInPlaceOf(const fs::path& old) {
        inPlace = untilNobodyElseHasIt([&] {
            return MoveFileExW(path.c_str(), old.c_str(),
                               MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
        });
        if (!inPlace) throw Trouble(GetLastError());
    }

private:
    fs::path path;
    bool inPlace = false;
};

}  // namespace

std::optional<std::string> replaceFile(const fs::path& path, std::string_view content) {
    try {
        const fs::path place = target(path);
        const fs::path folder = place.parent_path();
        std::error_code refused;
        if (!folder.empty()) fs::create_directories(folder, refused);
        if (refused) throw Trouble(static_cast<DWORD>(refused.value()));
        const bool wasThere = isThere(place);
        NewFile file(folder);
        file.write(content);
        if (wasThere) file.resemble(place);
        file.putInPlaceOf(place);
        return std::nullopt;
    } catch (const Trouble& trouble) {
        return trouble.what();
    }
}

void removeLeftovers(const fs::path& path) {
    try {
        const fs::path parent = target(path).parent_path();
        std::error_code error;
        for (fs::directory_iterator entry(parent.empty() ? "." : parent, error), end;
             !error && entry != end; entry.increment(error)) {
            if (!isOfNewName(entry->path().filename().string())) continue;
            // What a process is at work on cannot be opened.
            const Handle file(CreateFileW(entry->path().c_str(), DELETE, 0, nullptr, OPEN_EXISTING,
                                          FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT,
                                          nullptr));
        }
    } catch (const Trouble&) {
        // A folder that cannot be opened has nothing that could be removed.
    }
}

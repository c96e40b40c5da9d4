#include "tests/platform/shared/BrowserStandIn.h"

#include "platform/windows/win32.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/comesTrue.h"
#include "tests/support/readFile.h"
#include "tests/support/system.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>

namespace {

namespace fs = std::filesystem;

}  // namespace

/// A program of the tests under another name.
struct BrowserStandIn::System {
    /// What the system starts for addresses of pages, which is as it was when this object goes.
    class StartedForPages {
    public:
        explicit StartedForPages(const std::wstring& command) {
            DWORD size = 0;
            if (RegGetValueW(HKEY_CLASSES_ROOT, key, nullptr, RRF_RT_ANY, nullptr, nullptr,
                             &size) == ERROR_SUCCESS) {
                before.emplace(size / sizeof(wchar_t), L'\0');
                RegGetValueW(HKEY_CLASSES_ROOT, key, nullptr, RRF_RT_ANY, nullptr, before->data(),
                             &size);
            }
            set(command);
        }
        ~StartedForPages() {
            if (before) set(before->c_str());
        }
        StartedForPages(const StartedForPages&) = delete;
        StartedForPages& operator=(const StartedForPages&) = delete;

    private:
        static void set(const std::wstring& command) {
            const auto size = static_cast<DWORD>((command.size() + 1) * sizeof(wchar_t));
            if (RegSetKeyValueW(HKEY_CLASSES_ROOT, key, nullptr, REG_SZ, command.c_str(), size) !=
                ERROR_SUCCESS) {
                throw std::runtime_error("the browser cannot be set");
            }
        }

        static constexpr const wchar_t* key = L"http\\shell\\open\\command";
        std::optional<std::wstring> before;
    };

    [[nodiscard]] bool has(const char* ending) const { return fs::exists(beside(ending)); }
    [[nodiscard]] fs::path beside(const char* ending) const {
        fs::path longer = program;
        return longer += ending;
    }

    TemporaryFolder folder;
    fs::path program = folder.path() / "browser.exe";
    StartedForPages setting{L'"' + program.wstring() + L"\" \"%1\""};
};

BrowserStandIn::BrowserStandIn() : system(std::make_unique<System>()) {
    fs::copy_file(testSystem::programFile().parent_path() / "stand_in.exe", system->program);
}

BrowserStandIn::~BrowserStandIn() {
    fs::remove(system->beside(".gate"));
    if (!isStarted()) return;
    // As long as it runs its file cannot be removed.
    (void)comesTrue([this] {
        std::error_code inUse;
        return fs::remove(system->program, inUse);
    });
}

std::string BrowserStandIn::address() const {
    if (!comesTrue([this] { return isStarted(); })) return "never started";
    return readFile(system->beside(".started"));
}

bool BrowserStandIn::isStarted() const { return system->has(".started"); }

void BrowserStandIn::keepRunning() { std::ofstream(system->beside(".gate")) << '\n'; }

bool BrowserStandIn::isRunning() const { return isStarted() && !system->has(".ended"); }

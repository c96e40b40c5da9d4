#include "platform/MachineFacts.h"

#include "platform/windows/win32.h"

namespace {

class WindowsMachineFacts final : public MachineFacts {
public:
    [[nodiscard]] MemoryStatus memory() override {
        MEMORYSTATUSEX status{};
        status.dwLength = sizeof status;
        if (GlobalMemoryStatusEx(&status) == 0) return {};
        return {status.ullTotalPhys, status.ullAvailPhys};
    }

    [[nodiscard]] std::chrono::milliseconds uptime() override {
        return std::chrono::milliseconds(GetTickCount64());
    }
};

}  // namespace

std::unique_ptr<MachineFacts> makeMachineFacts() { return std::make_unique<WindowsMachineFacts>(); }

#include "platform/MachineFacts.h"

#include "platform/windows/win32.h"

#include <cstdint>
#include <ratio>

namespace {

/// The units that the system counts in.
using Units = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;

Units unitsOf(const FILETIME& time) {
    return Units(static_cast<std::int64_t>(time.dwHighDateTime) << 32U | time.dwLowDateTime);
}

/// What a thread or process has had, of the system itself and of its own code.
template <typename Times>
Units usedBy(Times times, HANDLE whose) {
    FILETIME begin{};
    FILETIME end{};
    FILETIME kernel{};
    FILETIME user{};
    times(whose, &begin, &end, &kernel, &user);
    return unitsOf(kernel) + unitsOf(user);
}

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

std::chrono::nanoseconds processorTime() { return usedBy(GetThreadTimes, GetCurrentThread()); }

std::chrono::nanoseconds processorTimeOfAll() {
    return usedBy(GetProcessTimes, GetCurrentProcess());
}

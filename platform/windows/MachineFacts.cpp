#include "platform/MachineFacts.h"

#include "platform/windows/win32.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <optional>
#include <ratio>

namespace {

using FineClock = std::chrono::steady_clock;
using Nanoseconds = std::chrono::duration<double, std::nano>;

using Cycles = std::optional<ULONG64>;

/// The cycles of the processor that this thread, or the whole program, has had so far. Wine 8 does
/// not count them.
Cycles cyclesOfThread() {
    ULONG64 count = 0;
    return QueryThreadCycleTime(GetCurrentThread(), &count) != 0 ? Cycles(count) : std::nullopt;
}
Cycles cyclesOfAll() {
    ULONG64 count = 0;
    return QueryProcessCycleTime(GetCurrentProcess(), &count) != 0 ? Cycles(count) : std::nullopt;
}

/// How many cycles a nanosecond has, which the system does not say; nothing where it counts none.
/// While others have the processor there are fewer, so the most of some short looks is right.
std::optional<double> measureRate() {
    constexpr int looks = 8;
    constexpr std::chrono::microseconds length{100};
    double most = 0;
    for (int look = 0; look < looks; ++look) {
        const auto begin = FineClock::now();
        const Cycles before = cyclesOfThread();
        auto now = FineClock::now();
        while (now - begin < length)
            now = FineClock::now();
        const Cycles after = cyclesOfThread();
        if (!before || !after) return std::nullopt;
        most = std::max(most,
                        static_cast<double>(*after - *before) / Nanoseconds(now - begin).count());
    }
    return most > 0 ? std::optional(most) : std::nullopt;
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

std::chrono::nanoseconds processorTime() {
    // The system counts in steps of up to 16 ms.
    using Units = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
    const auto units = [](const FILETIME& time) {
        return Units(static_cast<std::int64_t>(time.dwHighDateTime) << 32U | time.dwLowDateTime);
    };
    FILETIME begin{};
    FILETIME end{};
    FILETIME kernel{};
    FILETIME user{};
    GetThreadTimes(GetCurrentThread(), &begin, &end, &kernel, &user);
    return units(kernel) + units(user);
}

std::chrono::nanoseconds processorTimeOfAll() {
    static const std::optional<double> rate = measureRate();
    const Cycles cycles = rate ? cyclesOfAll() : std::nullopt;
    if (!cycles) return FineClock::now().time_since_epoch();
    return std::chrono::nanoseconds(std::llround(static_cast<double>(*cycles) / *rate));
}

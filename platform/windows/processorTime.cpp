#include "platform/processorTime.h"

#include "platform/windows/win32.h"

#include <cstdint>
#include <ratio>

namespace {

/// The units that the system counts in.
using Units = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;

Units unitsOf(const FILETIME& time) {
    return Units(static_cast<std::int64_t>(time.dwHighDateTime) << 32U | time.dwLowDateTime);
}

}  // namespace

std::chrono::nanoseconds processorTime() {
    FILETIME begin{};
    FILETIME end{};
    FILETIME kernel{};
    FILETIME user{};
    GetThreadTimes(GetCurrentThread(), &begin, &end, &kernel, &user);
    return unitsOf(kernel) + unitsOf(user);
}

#include "platform/MachineFacts.h"

#include "platform/linux/Descriptor.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>
#include <ctime>

namespace {

/// The bytes that a table such as "MemTotal:       24611400 kB\n..." has for `name`.
std::uint64_t bytesOf(std::string_view name, std::string_view table) {
    constexpr std::uint64_t bytesPerKb = 1024;
    const std::size_t start = table.find_first_of("0123456789", table.find(name));
    if (start == std::string_view::npos) return 0;
    std::uint64_t kilobytes = 0;
    std::from_chars(table.data() + start, table.data() + table.size(), kilobytes);
    return kilobytes * bytesPerKb;
}

std::chrono::nanoseconds timeOf(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return std::chrono::seconds{time.tv_sec} + std::chrono::nanoseconds{time.tv_nsec};
}

class LinuxMachineFacts final : public MachineFacts {
public:
    [[nodiscard]] MemoryStatus memory() override {
        // What is asked for stands in the first three lines.
        std::array<char, 512> start;
        const ssize_t count = pread(table.get(), start.data(), start.size(), 0);
        const std::string_view lines(start.data(), std::max<ssize_t>(count, 0));
        return {bytesOf("MemTotal:", lines), bytesOf("MemAvailable:", lines)};
    }

    [[nodiscard]] std::chrono::milliseconds uptime() override {
        return std::chrono::duration_cast<std::chrono::milliseconds>(timeOf(CLOCK_BOOTTIME));
    }

private:
    // Kept open: later there may be no descriptor for it.
    Descriptor table{open("/proc/meminfo", O_RDONLY | O_CLOEXEC)};
};

}  // namespace

std::unique_ptr<MachineFacts> makeMachineFacts() { return std::make_unique<LinuxMachineFacts>(); }

std::chrono::nanoseconds processorTime() { return timeOf(CLOCK_THREAD_CPUTIME_ID); }

std::chrono::nanoseconds processorTimeOfAll() { return timeOf(CLOCK_PROCESS_CPUTIME_ID); }

#include "platform/MachineFacts.h"

#include <charconv>
#include <fstream>
#include <string>
#include <string_view>

#include <ctime>

namespace {

/// The bytes in a line such as "MemTotal:       24611400 kB".
std::uint64_t bytesIn(std::string_view line) {
    constexpr std::uint64_t bytesPerKb = 1024;
    const std::size_t start = line.find_first_of("0123456789");
    if (start == std::string_view::npos) return 0;
    std::uint64_t kilobytes = 0;
    std::from_chars(line.data() + start, line.data() + line.size(), kilobytes);
    return kilobytes * bytesPerKb;
}

class LinuxMachineFacts final : public MachineFacts {
public:
    [[nodiscard]] MemoryStatus memory() override {
        MemoryStatus status;
        std::ifstream table("/proc/meminfo");
        for (std::string line; std::getline(table, line);) {
            if (line.starts_with("MemTotal:")) status.total = bytesIn(line);
            if (line.starts_with("MemAvailable:")) status.available = bytesIn(line);
        }
        return status;
    }

    [[nodiscard]] std::chrono::milliseconds uptime() override {
        timespec time{};
        clock_gettime(CLOCK_BOOTTIME, &time);
        return std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::seconds{time.tv_sec} + std::chrono::nanoseconds{time.tv_nsec});
    }
};

}  // namespace

std::unique_ptr<MachineFacts> makeMachineFacts() { return std::make_unique<LinuxMachineFacts>(); }

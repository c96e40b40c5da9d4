#pragma once

#include <chrono>
#include <cstdint>
#include <memory>

/// Physical memory, in bytes.
struct MemoryStatus {
    std::uint64_t total = 0;
    std::uint64_t available = 0;
};

/// Facts about the machine. What cannot be found out is zero.
class MachineFacts {
public:
    MachineFacts() = default;
    MachineFacts(const MachineFacts&) = delete;
    MachineFacts& operator=(const MachineFacts&) = delete;
    virtual ~MachineFacts() = default;

    /// The memory as it is now.
    [[nodiscard]] virtual MemoryStatus memory() = 0;
    /// The time since the machine was started, sleep included.
    [[nodiscard]] virtual std::chrono::milliseconds uptime() = 0;
};

/// The facts of the machine that the program runs on.
[[nodiscard]] std::unique_ptr<MachineFacts> makeMachineFacts();

/// The processor time that this thread has had so far. Waiting for a disk takes none.
[[nodiscard]] std::chrono::nanoseconds processorTime();
/// The processor time of all threads of the program together, in steps of a part of a microsecond.
/// Where the system does not count so finely, it is the time that passes, which also goes on while
/// the program waits.
[[nodiscard]] std::chrono::nanoseconds processorTimeOfAll();

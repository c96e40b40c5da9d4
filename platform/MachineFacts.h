#pragma once

#include <chrono>
#include <cstdint>
#include <memory>

/// Physical memory, in bytes.
struct MemoryStatus {
    std::uint64_t total = 0;
    std::uint64_t available = 0;
};

/// What the machine tells of itself. A machine that does not tell gives zeros.
class MachineFacts {
public:
    MachineFacts() = default;
    MachineFacts(const MachineFacts&) = delete;
    MachineFacts& operator=(const MachineFacts&) = delete;
    virtual ~MachineFacts() = default;

    [[nodiscard]] virtual MemoryStatus memory() = 0;
    /// The time since the machine was started, sleep included.
    [[nodiscard]] virtual std::chrono::milliseconds uptime() = 0;
};

[[nodiscard]] std::unique_ptr<MachineFacts> makeMachineFacts();

#pragma once

#include <memory>
#include <string>

/// The local time and date as the system writes them.
class Clock {
public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    /// As in "12:30:05".
    [[nodiscard]] virtual std::string timeText() = 0;
    /// As in "11/21/26".
    [[nodiscard]] virtual std::string dateText() = 0;
};

[[nodiscard]] std::unique_ptr<Clock> makeClock();

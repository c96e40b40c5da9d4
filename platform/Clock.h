#pragma once

#include <memory>
#include <string>

/// The local time and date, in the form that the user has chosen on this system.
class Clock {
public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    /// The time with seconds, such as "12:30:05".
    [[nodiscard]] virtual std::string timeText() = 0;
    /// The date in its short form, such as "11/21/26".
    [[nodiscard]] virtual std::string dateText() = 0;
};

/// A clock that follows changes of the time zone.
[[nodiscard]] std::unique_ptr<Clock> makeClock();

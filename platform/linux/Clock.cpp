#include "platform/Clock.h"

#include <array>
#include <ctime>

#include <locale.h>
#include <time.h>

namespace {

/// Writes in the language of the environment (LC_ALL, LC_TIME, LANG). It has a locale of its own,
/// so that the one of the process, and with it the form of numbers, stays as it is.
class LinuxClock final : public Clock {
public:
    LinuxClock() : locale(newlocale(LC_TIME_MASK, "", nullptr)) {
        // The environment may name a locale that is not installed.
        if (locale == nullptr) locale = newlocale(LC_TIME_MASK, "C", nullptr);
        // The zone's file is read now: later there may be no descriptor for it.
        tzset();
    }
    ~LinuxClock() override { freelocale(locale); }
    LinuxClock(const LinuxClock&) = delete;
    LinuxClock& operator=(const LinuxClock&) = delete;

    [[nodiscard]] std::string timeText() override { return now("%X"); }
    [[nodiscard]] std::string dateText() override { return now("%x"); }

private:
    [[nodiscard]] std::string now(const char* form) const {
        // A user who travels gets the new time zone without restarting the program.
        tzset();
        const std::time_t moment = std::time(nullptr);
        std::tm parts{};
        localtime_r(&moment, &parts);
        std::array<char, 256> text;
        const std::size_t size = strftime_l(text.data(), text.size(), form, &parts, locale);
        return {text.data(), size};
    }

    locale_t locale;
};

}  // namespace

std::unique_ptr<Clock> makeClock() { return std::make_unique<LinuxClock>(); }

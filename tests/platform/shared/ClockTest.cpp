#include "platform/Clock.h"

#include <gtest/gtest.h>

#include <clocale>
#include <ctime>
#include <string>

namespace {

/// The local time now by this form, in the language of the process, which is C.
std::string now(const char* form) {
    const std::time_t moment = std::time(nullptr);
    char text[64];
    return {text, std::strftime(text, sizeof text, form, std::localtime(&moment))};
}

/// Whether `text()` has within it what the form gave at one moment of the call. How the user's
/// language orders and separates the parts is its own matter.
template <typename Text>
bool hasNow(const char* form, Text text) {
    const std::string before = now(form);
    const std::string given = text();
    return given.find(before) != std::string::npos || given.find(now(form)) != std::string::npos;
}

TEST(SystemClock, WritesTheTimeWithMinutesAndSeconds) {
    const auto clock = makeClock();
    EXPECT_TRUE(hasNow("%M", [&] { return clock->timeText(); })) << clock->timeText();
    EXPECT_TRUE(hasNow("%S", [&] { return clock->timeText(); })) << clock->timeText();
}

TEST(SystemClock, WritesTheDateWithDayAndYear) {
    const auto clock = makeClock();
    EXPECT_TRUE(hasNow("%d", [&] { return clock->dateText(); })) << clock->dateText();
    EXPECT_TRUE(hasNow("%y", [&] { return clock->dateText(); })) << clock->dateText();
}

TEST(SystemClock, LeavesTheLanguageOfTheProcessAsItIs) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    const auto clock = makeClock();
    (void)clock->timeText();
    (void)clock->dateText();
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
}

}  // namespace

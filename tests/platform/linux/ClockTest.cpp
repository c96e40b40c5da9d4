#include "platform/Clock.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Variable.h"
#include "tests/support/linux/forked.h"

#include <gtest/gtest.h>

#include <clocale>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

/// The clock of a user whose language and time zone are known.
class LocalClock : public testing::Test {
protected:
    /// What the system's own clock gives by this form, in the language of the process, which is C.
    [[nodiscard]] static std::string now(const char* form) {
        const std::time_t moment = std::time(nullptr);
        char text[64];
        return {text, std::strftime(text, sizeof text, form, std::localtime(&moment))};
    }

    /// The time in a zone so far east, by a way that no zone changes.
    [[nodiscard]] static std::string fiveHoursAnd47MinutesOn() {
        const std::time_t moment = std::time(nullptr) + (5 * 60 + 47) * 60;
        char text[64];
        return {text, std::strftime(text, sizeof text, "%H:%M:%S", std::gmtime(&moment))};
    }

    /// `text()` was right at one moment of the call.
    template <typename Text>
    [[nodiscard]] static bool isNow(const char* form, Text text) {
        const std::string before = now(form);
        const std::string given = text();
        return given == before || given == now(form);
    }

    Variable language{"LC_ALL", "C"};
    Variable zone{"TZ", std::nullopt};
};

TEST_F(LocalClock, WritesTheTimeWithHoursMinutesAndSeconds) {
    const auto clock = makeClock();
    EXPECT_TRUE(isNow("%H:%M:%S", [&] { return clock->timeText(); })) << clock->timeText();
}

TEST_F(LocalClock, WritesTheDateWithMonthDayAndYear) {
    const auto clock = makeClock();
    EXPECT_TRUE(isNow("%m/%d/%y", [&] { return clock->dateText(); })) << clock->dateText();
}

TEST_F(LocalClock, FollowsTheTimeZoneWhileItRuns) {
    const auto clock = makeClock();
    const Variable here("TZ", "Here0");
    ASSERT_TRUE(isNow("%H:%M:%S", [&] { return clock->timeText(); }));
    const Variable elsewhere("TZ", "Elsewhere-5:47");
    const std::string before = fiveHoursAnd47MinutesOn();
    const std::string given = clock->timeText();
    EXPECT_TRUE(given == before || given == fiveHoursAnd47MinutesOn()) << given;
}

TEST_F(LocalClock, KnowsTheTimeZoneThoughNoFileCanBeOpened) {
    // One zone of 5:47 east, by the name "E".
    std::string rules(28, '\0');
    rules.replace(0, 4, "TZif");
    const auto number = [&rules](int value) {
        for (int shift = 24; shift >= 0; shift -= 8)
            rules += static_cast<char>(value >> shift);
    };
    for (const int count : {0, 0, 1, 2})
        number(count);
    number((5 * 60 + 47) * 60);
    rules.append(2, '\0').append("E").append(1, '\0');
    const TemporaryFolder folder;
    const std::filesystem::path file = folder.path() / "zone";
    std::ofstream(file) << rules;
    const Variable here("TZ", ":" + file.string());
    EXPECT_TRUE(passesForked([] {
        const auto clock = makeClock();
        refuseDescriptors();
        const std::string before = fiveHoursAnd47MinutesOn();
        const std::string given = clock->timeText();
        EXPECT_TRUE(given == before || given == fiveHoursAnd47MinutesOn()) << given;
    }));
}

TEST_F(LocalClock, WritesInTheFormOfCWhereTheLanguageIsNotInstalled) {
    const Variable unknown("LC_ALL", "xx_XX.UTF-8");
    const auto clock = makeClock();
    EXPECT_TRUE(isNow("%H:%M:%S", [&] { return clock->timeText(); })) << clock->timeText();
}

TEST_F(LocalClock, LeavesTheLanguageOfTheProcessAsItIs) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    const Variable other("LC_ALL", "C.UTF-8");
    (void)makeClock()->timeText();
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
}

}  // namespace

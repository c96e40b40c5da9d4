#include "desktop/mdlFunctions.h"

#include "platform/MachineFacts.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <limits>
#include <string>

namespace {

using mdlFunctions::AvailableRam;
using mdlFunctions::RamRatio;
using mdlFunctions::TotalRam;
using mdlFunctions::UptimeText;

constexpr std::uint64_t mb = 1044032;
constexpr std::uint64_t largest = std::numeric_limits<std::int32_t>::max();

class GivenMachine final : public MachineFacts {
public:
    MemoryStatus status;
    std::chrono::milliseconds ticks{0};

    GivenMachine() = default;
    GivenMachine(std::uint64_t total, std::uint64_t available) : status{total, available} {}

    [[nodiscard]] MemoryStatus memory() override { return status; }
    [[nodiscard]] std::chrono::milliseconds uptime() override { return ticks; }
};

struct Size {
    const char* name;
    std::uint64_t bytes;
    const char* text;
};

void PrintTo(const Size& size, std::ostream* stream) { *stream << size.bytes; }

class MemorySize : public testing::TestWithParam<Size> {};

TEST_P(MemorySize, IsTheTextOfAllMemory) {
    GivenMachine machine(GetParam().bytes, 7 * mb);
    EXPECT_EQ(TotalRam(machine), GetParam().text);
}

TEST_P(MemorySize, IsTheTextOfFreeMemory) {
    GivenMachine machine(7 * mb, GetParam().bytes);
    EXPECT_EQ(AvailableRam(machine), GetParam().text);
}

constexpr Size sizes[] = {
    {"Nothing", 0, "0 Mb"},
    {"OneDivisor", mb, "1 Mb"},
    {"OneTrueMegabyteIsNoMore", 1048576, "1 Mb"},
    {"TenDivisorsHaveNoTrailingZero", 10 * mb, "10 Mb"},
    {"OneDecimalPlace", 133010000, "127.4 Mb"},
    {"HalfATenthIsRoundedUp", 3 * mb / 4, "0.8 Mb"},
    {"JustBelowHalfATenthIsRoundedDown", 3 * mb / 4 - 1, "0.7 Mb"},
    {"RoundedUpToAWholeNumber", mb * 2 - 1, "2 Mb"},
    {"LargestCount", largest, "2056.9 Mb"},
    {"OneAboveTheLargestCountIsTheLargest", largest + 1, "2056.9 Mb"},
    {"FarAboveTheLargestCountIsTheLargest", 64ULL << 30, "2056.9 Mb"},
};

INSTANTIATE_TEST_SUITE_P(Table, MemorySize, testing::ValuesIn(sizes),
                         [](const auto& info) { return info.param.name; });

TEST(AvailableRam, IsReadAfreshByEachCall) {
    GivenMachine machine(512 * mb, 128 * mb);
    EXPECT_EQ(AvailableRam(machine), "128 Mb");
    machine.status.available = 127 * mb;
    EXPECT_EQ(AvailableRam(machine), "127 Mb");
}

struct Ratio {
    const char* name;
    std::uint64_t total;
    std::uint64_t available;
    const char* text;
};

void PrintTo(const Ratio& ratio, std::ostream* stream) {
    *stream << ratio.total << " to " << ratio.available;
}

class MemoryRatio : public testing::TestWithParam<Ratio> {};

TEST_P(MemoryRatio, IsAllMemoryByFreeMemory) {
    GivenMachine machine(GetParam().total, GetParam().available);
    EXPECT_EQ(RamRatio(machine), GetParam().text);
}

constexpr Ratio ratios[] = {
    {"AQuarterIsFree", 512 * mb, 128 * mb, "4%"},
    {"HalfIsFree", 512 * mb, 256 * mb, "2%"},
    {"AllIsFree", 512 * mb, 512 * mb, "1%"},
    {"TwoAndAHalfGoesToTheEvenTwo", 5 * mb, 2 * mb, "2%"},
    {"ThreeAndAHalfGoesToTheEvenFour", 7 * mb, 2 * mb, "4%"},
    {"FreeMemoryOfTwoAndAHalfCountsAsTwo", 12 * mb, 5 * mb / 2, "6%"},
    {"FreeMemoryOfThreeAndAHalfCountsAsFour", 12 * mb, 7 * mb / 2, "3%"},
    {"AllMemoryOfTwoAndAHalfCountsAsTwo", 5 * mb / 2, mb, "2%"},
    {"RoundedToTenthsFirst", 12 * mb, mb * 346 / 100, "3%"},
    {"AllMemoryOfNothing", 0, mb, "0%"},
    {"BothAboveTheLargestCount", 64ULL << 30, 32ULL << 30, "1%"},
};

INSTANTIATE_TEST_SUITE_P(Table, MemoryRatio, testing::ValuesIn(ratios),
                         [](const auto& info) { return info.param.name; });

TEST(RamRatio, IsNothingWhenTheFreeMemoryRoundsToNothing) {
    GivenMachine none(512 * mb, 0);
    EXPECT_EQ(RamRatio(none), std::nullopt);
    GivenMachine half(512 * mb, mb / 2);
    EXPECT_EQ(RamRatio(half), std::nullopt);
    GivenMachine more(512 * mb, mb * 6 / 10);
    EXPECT_EQ(RamRatio(more), "512%");
}

struct Uptime {
    const char* name;
    std::int64_t ticks;
    const char* text;
};

void PrintTo(const Uptime& uptime, std::ostream* stream) { *stream << uptime.ticks; }

class UptimeOf : public testing::TestWithParam<Uptime> {};

TEST_P(UptimeOf, IsWrittenInDaysHoursMinutesAndSeconds) {
    GivenMachine machine;
    machine.ticks = std::chrono::milliseconds{GetParam().ticks};
    EXPECT_EQ(UptimeText(machine), GetParam().text);
}

constexpr Uptime uptimes[] = {
    {"Nothing", 0, "0 days, 0 hours, 0 minutes and 0 seconds."},
    {"LessThanASecond", 999, "0 days, 0 hours, 0 minutes and 0 seconds."},
    {"OneOfEachHasNoSingular", 90061000, "1 days, 1 hours, 1 minutes and 1 seconds."},
    {"AnHourFiveMinutesAndNineSeconds", 3909999, "0 days, 1 hours, 5 minutes and 9 seconds."},
    {"ASecondBelowADay", 86399000, "0 days, 23 hours, 59 minutes and 59 seconds."},
    {"TheLargestCount", largest, "24 days, 20 hours, 31 minutes and 23 seconds."},
    {"OneAboveTheLargestCount", largest + 1,
     "-24 days, -596 hours, -35791 minutes and -23 seconds."},
    {"JustBelowTwiceTheRange", 4294967295, "0 days, 0 hours, 0 minutes and 0 seconds."},
    {"ASecondBelowTwiceTheRange", 4294966296, "0 days, 0 hours, 0 minutes and -1 seconds."},
    {"TwiceTheRangeBeginsAgain", 4294967296 + 61000, "0 days, 0 hours, 1 minutes and 1 seconds."},
};

INSTANTIATE_TEST_SUITE_P(Table, UptimeOf, testing::ValuesIn(uptimes),
                         [](const auto& info) { return info.param.name; });

}  // namespace

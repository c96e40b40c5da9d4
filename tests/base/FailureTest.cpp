#include "base/Failure.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <new>
#include <string>

namespace {

std::string failing() { throw Failure("no such word"); }

TEST(Attempt, SkipsAStepThatFailsAndGoesOn) {
    bool wentOn = false;
    attempt([] { (void)failing(); });
    attempt([&] { wentOn = true; });
    EXPECT_TRUE(wentOn);
}

TEST(Attempt, LeavesTheTargetOfAFailedAssignment) {
    std::string target = "before";
    attempt([&] { target = failing(); });
    EXPECT_EQ(target, "before");
}

TEST(Attempt, AbandonsABlockAtItsFirstFailure) {
    std::string steps;
    attempt([&] {
        steps += "one";
        steps += failing();
        steps += "three";
    });
    EXPECT_EQ(steps, "one");
}

TEST(Attempt, PassesOnWhatIsNoFailure) {
    EXPECT_THROW(attempt([] { throw std::bad_alloc(); }), std::bad_alloc);
    EXPECT_THROW(attempt([] { throw std::runtime_error("other"); }), std::runtime_error);
}

TEST(Holds, IsTheAnswerOfTheTest) {
    EXPECT_TRUE(holds([] { return true; }));
    EXPECT_FALSE(holds([] { return false; }));
}

TEST(Holds, IsTrueWhenTheTestFails) {
    EXPECT_TRUE(holds([] { return failing() == "something else"; }));
}

TEST(Holds, PassesOnWhatIsNoFailure) {
    EXPECT_THROW((void)holds([]() -> bool { throw std::bad_alloc(); }), std::bad_alloc);
}

TEST(Checked, GivesNumbersThatFit) {
    EXPECT_EQ(checked<std::int16_t>(32767), 32767);
    EXPECT_EQ(checked<std::int16_t>(-32768), -32768);
    EXPECT_EQ(checked<std::uint16_t>(65535), 65535);
    EXPECT_EQ(checked<std::uint8_t>(std::size_t{255}), 255);
}

TEST(Checked, FailsWhereANumberWouldWrap) {
    EXPECT_THROW((void)checked<std::int16_t>(32768), Failure);
    EXPECT_THROW((void)checked<std::int16_t>(-32769), Failure);
    EXPECT_THROW((void)checked<std::uint16_t>(65536), Failure);
    EXPECT_THROW((void)checked<std::uint16_t>(-1), Failure);
    EXPECT_THROW((void)checked<std::int16_t>(std::numeric_limits<std::uint64_t>::max()), Failure);
}

}  // namespace

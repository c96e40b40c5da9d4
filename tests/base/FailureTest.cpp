#include "base/Failure.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <optional>
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

TEST(Need, IsWhatIsThere) {
    EXPECT_EQ(need(std::optional<int>(7)), 7);
    EXPECT_EQ(need(std::optional<std::string>("text")), "text");
    EXPECT_EQ(need(std::optional<bool>(false)), false);
}

TEST(Need, TakesOverWhatCannotBeCopied) {
    EXPECT_EQ(*need(std::optional(std::make_unique<int>(7))), 7);
}

TEST(Need, AbandonsTheStepWhereNothingIs) {
    EXPECT_THROW((void)need(std::optional<int>()), Failure);
}

TEST(Need, GivesItsReason) {
    try {
        (void)need(std::optional<int>(), "too long");
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_STREQ(failure.what(), "too long");
    }
}

TEST(Need, IsTheAnswerThatIsKnown) {
    EXPECT_TRUE(need(Answer::Yes));
    EXPECT_FALSE(need(Answer::No));
    EXPECT_THROW((void)need(Answer::Unknown), Failure);
}

TEST(Answer, ThatIsUnknownMayBeYesAndIsNotSurely) {
    EXPECT_TRUE(mayBe(Answer::Unknown));
    EXPECT_FALSE(surely(Answer::Unknown));
}

TEST(Answer, ThatIsKnownIsTheSameInBothWays) {
    EXPECT_TRUE(mayBe(Answer::Yes));
    EXPECT_TRUE(surely(Answer::Yes));
    EXPECT_FALSE(mayBe(Answer::No));
    EXPECT_FALSE(surely(Answer::No));
}

TEST(Checked, GivesNumbersThatFit) {
    EXPECT_EQ(checked<std::int16_t>(32767), 32767);
    EXPECT_EQ(checked<std::int16_t>(-32768), -32768);
    EXPECT_EQ(checked<std::uint16_t>(65535), 65535);
    EXPECT_EQ(checked<std::uint8_t>(std::size_t{255}), 255);
}

TEST(Checked, IsNothingWhereANumberWouldWrap) {
    EXPECT_EQ(checked<std::int16_t>(32768), std::nullopt);
    EXPECT_EQ(checked<std::int16_t>(-32769), std::nullopt);
    EXPECT_EQ(checked<std::uint16_t>(65536), std::nullopt);
    EXPECT_EQ(checked<std::uint16_t>(-1), std::nullopt);
    EXPECT_EQ(checked<std::int16_t>(std::numeric_limits<std::uint64_t>::max()), std::nullopt);
}

}  // namespace

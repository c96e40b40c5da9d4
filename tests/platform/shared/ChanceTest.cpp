#include "platform/Chance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

std::vector<float> draws(Chance& chance, std::size_t count) {
    std::vector<float> numbers(count);
    std::generate(numbers.begin(), numbers.end(), [&] { return chance.draw(); });
    return numbers;
}

TEST(SystemChance, DrawsFromZeroToBelowOne) {
    const auto chance = makeChance();
    for (const float number : draws(*chance, 100'000)) {
        ASSERT_GE(number, 0.0F);
        ASSERT_LT(number, 1.0F);
    }
}

TEST(SystemChance, DrawsAllOverItsRange) {
    const auto chance = makeChance();
    constexpr std::size_t tenths = 10;
    std::vector<int> counts(tenths);
    for (const float number : draws(*chance, 100'000))
        ++counts[static_cast<std::size_t>(number * tenths)];
    // 10,000 each are expected; 1,000 off are more than ten times what chance does.
    for (const int count : counts)
        EXPECT_NEAR(count, 10'000, 1'000);
}

TEST(SystemChance, DrawsOtherNumbersEachTime) {
    const auto one = makeChance();
    const auto other = makeChance();
    const auto numbers = draws(*one, 10);
    EXPECT_NE(numbers, draws(*one, 10));
    EXPECT_NE(numbers, draws(*other, 10));
}

}  // namespace

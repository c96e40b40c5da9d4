#include "platform/MachineFacts.h"

#include "tests/support/waiting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <vector>

namespace {

class Machine : public testing::Test {
protected:
    std::unique_ptr<MachineFacts> facts = makeMachineFacts();
};

TEST_F(Machine, HasTheSameMemoryInAllAtEachLook) {
    EXPECT_GT(facts->memory().total, 0U);
    EXPECT_EQ(facts->memory().total, facts->memory().total);
}

TEST_F(Machine, HasSomeMemoryFreeAndNotMoreThanThereIs) {
    const MemoryStatus memory = facts->memory();
    EXPECT_GT(memory.available, 0U);
    EXPECT_LE(memory.available, memory.total);
}

TEST_F(Machine, CountsTheTimeThatPasses) {
    // Coarse clocks tick every 16 ms.
    constexpr std::chrono::milliseconds tick{16};
    constexpr std::chrono::milliseconds some{50};
    const auto before = facts->uptime();
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_TRUE(becomesTrue([&] { return facts->uptime() >= before + some; }));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, some - tick);
}

TEST(ProcessorTimeOfAll, GoesOnInSmallSteps) {
    std::vector<std::chrono::nanoseconds> steps;
    auto last = processorTimeOfAll();
    ASSERT_TRUE(becomesTrue([&] {
        // Between two looks another program may have the processor.
        for (int look = 0; look < 1000; ++look) {
            const auto now = processorTimeOfAll();
            if (now != last) steps.push_back(now - last);
            last = now;
        }
        return steps.size() >= 100;
    }));
    std::ranges::sort(steps);
    EXPECT_GT(steps.front(), std::chrono::nanoseconds(0));
    EXPECT_LT(steps[steps.size() / 2], std::chrono::microseconds(500));
}

}  // namespace

#include "platform/MachineFacts.h"

#include "tests/support/waiting.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>

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

}  // namespace

#include "platform/MachineFacts.h"

#include "tests/support/linux/forked.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <ctime>
#include <memory>

#include <sys/sysinfo.h>

namespace {

class LinuxMachine : public testing::Test {
protected:
    std::unique_ptr<MachineFacts> facts = makeMachineFacts();

    [[nodiscard]] static std::chrono::milliseconds sinceStart() {
        timespec now{};
        clock_gettime(CLOCK_BOOTTIME, &now);
        return std::chrono::milliseconds{now.tv_sec * 1000 + now.tv_nsec / 1000000};
    }
};

TEST_F(LinuxMachine, HasTheMemoryThatTheSystemCounts) {
    struct sysinfo system {};
    ASSERT_EQ(sysinfo(&system), 0);
    const std::uint64_t total = std::uint64_t{system.totalram} * system.mem_unit;
    // The table counts in units of 1024 bytes.
    EXPECT_EQ(facts->memory().total / 1024, total / 1024);
}

TEST_F(LinuxMachine, CountsMillisecondsSinceItsStart) {
    const auto before = sinceStart();
    const auto uptime = facts->uptime();
    EXPECT_GE(uptime, before);
    EXPECT_LE(uptime, sinceStart());
}

TEST_F(LinuxMachine, HasItsMemoryThoughNoFileCanBeOpened) {
    EXPECT_TRUE(passesForked([] {
        const auto facts = makeMachineFacts();
        const MemoryStatus before = facts->memory();
        refuseDescriptors();
        EXPECT_EQ(facts->memory().total, before.total);
        EXPECT_GT(facts->memory().available, 0U);
    }));
}

}  // namespace

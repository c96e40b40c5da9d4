#include "platform/Folders.h"
#include "platform/MachineFacts.h"
#include "platform/linux/Folders.h"
#include "tests/support/Variable.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <filesystem>
#include <memory>
#include <optional>

#include <pwd.h>
#include <sys/sysinfo.h>
#include <unistd.h>

namespace {

using std::filesystem::path;

struct Surroundings {
    const char* name;
    std::optional<std::string> special;
    std::optional<std::string> home;
    path folder;
};

void PrintTo(const Surroundings& given, std::ostream* stream) { *stream << given.name; }

path homeOfUser() { return getpwuid(getuid())->pw_dir; }

class SettingsFolder : public testing::TestWithParam<Surroundings> {};

TEST_P(SettingsFolder, IsFoundFromTheEnvironment) {
    const Variable special("XDG_CONFIG_HOME", GetParam().special);
    const Variable home("HOME", GetParam().home);
    EXPECT_EQ(folders::settings(), GetParam().folder);
}

const Surroundings settingsCases[] = {
    {"GivenItself", "/given", "/home/ann", "/given"},
    {"FromHome", std::nullopt, "/home/ann", "/home/ann/.config"},
    {"FromHomeWhenEmpty", "", "/home/ann", "/home/ann/.config"},
    {"FromHomeWhenRelative", "given", "/home/ann", "/home/ann/.config"},
    {"OfTheUserWithoutHome", std::nullopt, std::nullopt, homeOfUser() / ".config"},
    {"OfTheUserWithARelativeHome", std::nullopt, "ann", homeOfUser() / ".config"},
};

INSTANTIATE_TEST_SUITE_P(Table, SettingsFolder, testing::ValuesIn(settingsCases),
                         [](const auto& info) { return info.param.name; });

class WinePrefix : public testing::TestWithParam<Surroundings> {};

TEST_P(WinePrefix, IsFoundFromTheEnvironment) {
    const Variable special("WINEPREFIX", GetParam().special);
    const Variable home("HOME", GetParam().home);
    EXPECT_EQ(folders::winePrefix(), GetParam().folder);
}

const Surroundings prefixCases[] = {
    {"GivenItself", "/given", "/home/ann", "/given"},
    {"FromHome", std::nullopt, "/home/ann", "/home/ann/.wine"},
    {"FromHomeWhenEmpty", "", "/home/ann", "/home/ann/.wine"},
    {"FromHomeWhenRelative", "given", "/home/ann", "/home/ann/.wine"},
    {"OfTheUserWithoutHome", std::nullopt, std::nullopt, homeOfUser() / ".wine"},
};

INSTANTIATE_TEST_SUITE_P(Table, WinePrefix, testing::ValuesIn(prefixCases),
                         [](const auto& info) { return info.param.name; });

class Machine : public testing::Test {
protected:
    std::unique_ptr<MachineFacts> facts = makeMachineFacts();

    [[nodiscard]] static std::chrono::milliseconds sinceStart() {
        timespec now{};
        clock_gettime(CLOCK_BOOTTIME, &now);
        return std::chrono::milliseconds{now.tv_sec * 1000 + now.tv_nsec / 1000000};
    }
};

TEST_F(Machine, HasTheMemoryThatTheSystemCounts) {
    struct sysinfo system {};
    ASSERT_EQ(sysinfo(&system), 0);
    const std::uint64_t total = std::uint64_t{system.totalram} * system.mem_unit;
    // The table counts in units of 1024 bytes.
    EXPECT_EQ(facts->memory().total / 1024, total / 1024);
}

TEST_F(Machine, HasTheSameMemoryInAllAtEachLook) {
    EXPECT_EQ(facts->memory().total, facts->memory().total);
}

TEST_F(Machine, HasSomeMemoryFreeAndNotMoreThanThereIs) {
    const MemoryStatus memory = facts->memory();
    EXPECT_GT(memory.available, 0U);
    EXPECT_LE(memory.available, memory.total);
}

TEST_F(Machine, CountsMillisecondsSinceItsStart) {
    const auto before = sinceStart();
    const auto uptime = facts->uptime();
    EXPECT_GE(uptime, before);
    EXPECT_LE(uptime, sinceStart());
}

}  // namespace

#include "platform/linux/bus/sessionBus.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Variable.h"
#include "tests/support/linux/BadBus.h"
#include "tests/support/linux/SessionBus.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ostream>
#include <string>

namespace {

using namespace std::chrono_literals;

using Manner = BadBus::Manner;

constexpr const char* variable = "DBUS_SESSION_BUS_ADDRESS";
const std::string none = "disabled:";

/// What is left in the environment of these addresses.
std::string selectedFrom(const std::string& addresses) {
    const Variable known(variable, addresses);
    sessionBus::select();
    return qEnvironmentVariable(variable).toStdString();
}

struct Row {
    const char* name;
    Manner manner;
};

void PrintTo(const Row& row, std::ostream* stream) { *stream << row.name; }

class ABadBus : public testing::TestWithParam<Row> {
protected:
    BadBus bad{GetParam().manner};
};

TEST_P(ABadBus, IsNotSelectedAndCostsTwoSecondsAtMost) {
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(selectedFrom(bad.address()), none);
    EXPECT_LT(std::chrono::steady_clock::now() - before, 4s);
}

TEST_P(ABadBus, BehindAGoodOneIsNotTried) {
    const SessionBus good;
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(selectedFrom(good.address() + ';' + bad.address()), good.address());
    EXPECT_LT(std::chrono::steady_clock::now() - before, 1500ms);
}

constexpr Row rows[] = {
    {"Silent", Manner::Silent},           {"SilentAfterLogin", Manner::SilentAfterLogin},
    {"Nonsense", Manner::Nonsense},       {"NonsenseAfterLogin", Manner::NonsenseAfterLogin},
    {"OtherAnswer", Manner::OtherAnswer}, {"Refusal", Manner::Refusal},
    {"EndlessLine", Manner::EndlessLine}, {"Rejection", Manner::Rejection},
    {"Closing", Manner::Closing},
};

INSTANTIATE_TEST_SUITE_P(Table, ABadBus, testing::ValuesIn(rows),
                         [](const auto& info) { return info.param.name; });

TEST(SessionBusSelection, IsTheFirstThatAnswers) {
    const SessionBus good;
    const BadBus bad(Manner::Nonsense);
    EXPECT_EQ(selectedFrom(good.address()), good.address());
    EXPECT_EQ(selectedFrom(good.address() + ",guid=0123"), good.address() + ",guid=0123");
    EXPECT_EQ(selectedFrom("unix:path=/nowhere/bus;" + bad.address() + ';' + good.address()),
              good.address());
}

TEST(SessionBusSelection, WaitsTwoSecondsForAllBusesTogether) {
    const BadBus first(Manner::Silent);
    const BadBus second(Manner::SilentAfterLogin);
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(selectedFrom(first.address() + ';' + second.address()), none);
    EXPECT_LT(std::chrono::steady_clock::now() - before, 4s);
}

TEST(SessionBusSelection, IsNoneWhereNoSocketOfThisMachineIsNamed) {
    for (const char* const address :
         {"tcp:host=127.0.0.1,port=1", "autolaunch:", "hello", "unix:", "unix:path=", ";",
          "unix:path=/nowhere/bus", "unix:abstract=cobweave-nowhere"}) {
        EXPECT_EQ(selectedFrom(address), none) << address;
    }
}

TEST(SessionBusSelection, TakesTheOneInTheUsersFolderWithoutAnAddress) {
    const SessionBus good;
    const Variable folder("XDG_RUNTIME_DIR", good.folder().string());
    EXPECT_EQ(selectedFrom(""), good.address());
}

TEST(SessionBusSelection, LeavesAnEnvironmentWithoutABusAsItIs) {
    const TemporaryFolder nothing;
    const Variable folder("XDG_RUNTIME_DIR", nothing.path().string());
    EXPECT_EQ(selectedFrom(""), "");
}

}  // namespace

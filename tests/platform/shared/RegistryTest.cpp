#include "tests/platform/shared/RegistryStandIn.h"

#include <gtest/gtest.h>

namespace {

TEST(SystemRegistry, HasTheKeysThatAreThereInAnyCaseAndNoOthers) {
    RegistryStandIn standIn;
    standIn.add("Add-on");
    const auto registry = standIn.open();
    EXPECT_TRUE(registry->currentUserHasKey(R"(Software\Cobweave test\Add-on)"));
    EXPECT_TRUE(registry->currentUserHasKey(R"(SOFTWARE\cobweave TEST\add-ON)"));
    EXPECT_FALSE(registry->currentUserHasKey(R"(Software\Cobweave test\Add)"));
    EXPECT_FALSE(registry->currentUserHasKey(R"(Software\Cobweave test\Add-on\More)"));
}

TEST(SystemRegistry, HasAKeyFromWhenItIsThere) {
    RegistryStandIn standIn;
    const auto registry = standIn.open();
    EXPECT_FALSE(registry->currentUserHasKey(R"(Software\Cobweave test\Add-on)"));
    standIn.add("Add-on");
    EXPECT_TRUE(registry->currentUserHasKey(R"(Software\Cobweave test\Add-on)"));
}

}  // namespace

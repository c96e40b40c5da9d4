#include "platform/Client.h"

#include "tests/support/TemporaryFolder.h"
#include "tests/support/Variable.h"

#include <gtest/gtest.h>

namespace {

TEST(SystemClient, IsPassedOverWhereThereIsNone) {
    const TemporaryFolder folder;
    const Variable nowhere("PATH", folder.path().string());
    const auto client = makeClient();
    testing::internal::CaptureStderr();
    EXPECT_NO_THROW(client->start());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace

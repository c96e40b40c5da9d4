#include "platform/shared/runEvent.h"

#include "tests/support/linux/forked.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <new>
#include <string>

namespace {

/// What so many broken events say on standard error, in a process of their own.
void expectErrors(int events, const std::function<void(const std::string&)>& expect) {
    EXPECT_TRUE(passesForked([&] {
        testing::internal::CaptureStderr();
        for (int count = 0; count < events; ++count)
            runEvent([] { throw std::bad_alloc(); });
        expect(testing::internal::GetCapturedStderr());
    }));
}

TEST(ReportOfABrokenEvent, IsOneLine) {
    expectErrors(1, [](const std::string& errors) {
        EXPECT_EQ(errors, "Cobweave: an event was broken off: std::bad_alloc.\n");
    });
}

TEST(ReportOfABrokenEvent, ComesAHundredTimesAtMost) {
    expectErrors(1000, [](const std::string& errors) {
        // Tests before this one may have taken some.
        EXPECT_LE(std::ranges::count(errors, '\n'), 100);
        EXPECT_GT(std::ranges::count(errors, '\n'), 50);
    });
}

}  // namespace

#include "platform/shared/runEvent.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

namespace {

TEST(BrokenEvent, MayBeBrokenByWhateverIsThrown) {
    EXPECT_NO_THROW(runEvent([] { throw std::runtime_error("reason"); }));
    EXPECT_NO_THROW(runEvent([] { throw 1; }));
}

TEST(BrokenEvent, EndsWhereItBroke) {
    int steps = 0;
    runEvent([&] {
        ++steps;
        if (steps == 1) throw std::bad_alloc();
        ++steps;
    });
    EXPECT_EQ(steps, 1);
}

}  // namespace

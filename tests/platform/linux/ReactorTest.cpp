#include "platform/linux/Reactor.h"

#include "platform/linux/Descriptor.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace {

struct Seen final : Readiness::Watched {
    int count = 0;
    Readiness::Ready last;

    void ready(Readiness::Ready now) override {
        ++count;
        last = now;
    }
};

class DescriptorsInAReactor : public testing::Test {
protected:
    Reactor reactor;
    Seen seen;

    [[nodiscard]] bool isReadable() const {
        pollfd entry{reactor.descriptor(), POLLIN, 0};
        return poll(&entry, 1, 0) == 1;
    }
};

TEST_F(DescriptorsInAReactor, NeedNotBeSockets) {
    const Descriptor counter(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    reactor.add(counter.get(), {.receiving = true}, seen);
    EXPECT_FALSE(isReadable());
    ASSERT_EQ(eventfd_write(counter.get(), 1), 0);
    EXPECT_TRUE(isReadable());
    reactor.dispatch();
    EXPECT_TRUE(seen.last.receiving);
    reactor.remove(counter.get(), seen);
}

TEST_F(DescriptorsInAReactor, MakeItReadableForAsLongAsTheyAreReady) {
    const Descriptor counter(eventfd(1, EFD_CLOEXEC | EFD_NONBLOCK));
    reactor.add(counter.get(), {.receiving = true}, seen);
    // Ready all the time, and yet the windows get their turn.
    reactor.dispatch();
    EXPECT_GE(seen.count, 1);
    EXPECT_TRUE(isReadable());
    reactor.change(counter.get(), {}, seen);
    EXPECT_FALSE(isReadable());
    reactor.change(counter.get(), {.receiving = true}, seen);
    EXPECT_TRUE(isReadable());
    reactor.remove(counter.get(), seen);
    EXPECT_FALSE(isReadable());
}

TEST_F(DescriptorsInAReactor, AreWaitedForByTheDispatchItselfWhileTheyAreBrisk) {
    struct Ticking final : Readiness::Watched {
        const Descriptor timer{timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)};
        int count = 0;

        /// Longer than nearly all that keeps a process from running.
        void setFor(std::chrono::nanoseconds time) const {
            itimerspec in{};
            in.it_value.tv_nsec = time.count();
            ASSERT_EQ(timerfd_settime(timer.get(), 0, &in, nullptr), 0);
        }

        void ready(Readiness::Ready /*now*/) override {
            ++count;
            setFor(std::chrono::milliseconds{2});
        }
    } ticking;
    reactor.add(ticking.timer.get(), {.receiving = true}, ticking);
    const auto countOfOne = [&] {
        const int before = ticking.count;
        reactor.dispatch();
        return ticking.count - before;
    };
    bool isWaitedFor = false;
    // The first is not brisk, and another program may get in between.
    for (int attempt = 0; attempt < 5 && !isWaitedFor; ++attempt) {
        ticking.setFor(std::chrono::nanoseconds{1});
        isWaitedFor = countOfOne() > 1;
    }
    EXPECT_TRUE(isWaitedFor);
    // And no longer than that: nothing is ready any more.
    reactor.change(ticking.timer.get(), {}, ticking);
    EXPECT_EQ(countOfOne(), 0);
    EXPECT_EQ(countOfOne(), 0);
    EXPECT_FALSE(isReadable());
    reactor.remove(ticking.timer.get(), ticking);
}

TEST_F(DescriptorsInAReactor, AreBrokenWhenTheOtherEndIsGone) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    const Descriptor reading(ends[0]);
    Descriptor writing(ends[1]);
    reactor.add(reading.get(), {}, seen);
    writing.reset();
    reactor.dispatch();
    EXPECT_TRUE(seen.last.broken);
    reactor.remove(reading.get(), seen);
}

}  // namespace

#include "platform/linux/Reactor.h"

#include "platform/linux/Descriptor.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <list>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace {

/// A descriptor that the test makes ready. It stays so until it is told otherwise.
class Signal final : public Readiness::Watched {
public:
    explicit Signal(Reactor& reactor) : reactor(reactor) {
        reactor.add(descriptor.get(), {.receiving = true}, *this);
    }
    ~Signal() { reactor.remove(descriptor.get(), *this); }

    void raise() const { ASSERT_EQ(eventfd_write(descriptor.get(), 1), 0); }
    void lower() const {
        eventfd_t value = 0;
        ASSERT_EQ(eventfd_read(descriptor.get(), &value), 0);
    }
    void change(Readiness::Interest interest) { reactor.change(descriptor.get(), interest, *this); }
    void remove() { reactor.remove(descriptor.get(), *this); }

    std::function<void()> whenReady = [this] { lower(); };
    int count = 0;
    Readiness::Ready last;

private:
    void ready(Readiness::Ready now) override {
        ++count;
        last = now;
        whenReady();
    }

    Reactor& reactor;
    Descriptor descriptor{eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
};

class WatchingReactor : public testing::Test {
protected:
    Reactor reactor;

    [[nodiscard]] bool hasSomethingToDo() const {
        pollfd entry{reactor.descriptor(), POLLIN, 0};
        return poll(&entry, 1, 0) == 1;
    }
};

TEST_F(WatchingReactor, IsReadableWhileSomethingIsReady) {
    Signal signal(reactor);
    EXPECT_FALSE(hasSomethingToDo());
    signal.raise();
    EXPECT_TRUE(hasSomethingToDo());
    reactor.dispatch();
    EXPECT_EQ(signal.count, 1);
    EXPECT_TRUE(signal.last.receiving);
    EXPECT_FALSE(signal.last.sending);
    EXPECT_FALSE(signal.last.broken);
    EXPECT_FALSE(hasSomethingToDo());
}

TEST_F(WatchingReactor, DoesNothingWhenNothingIsReady) {
    Signal signal(reactor);
    reactor.dispatch();
    EXPECT_EQ(signal.count, 0);
}

TEST_F(WatchingReactor, LooksForWhatItIsToldToLookFor) {
    Signal signal(reactor);
    signal.change({});
    signal.raise();
    reactor.dispatch();
    EXPECT_EQ(signal.count, 0);
    signal.change({.sending = true});
    signal.whenReady = [&] { signal.change({}); };
    reactor.dispatch();
    EXPECT_EQ(signal.count, 1);
    EXPECT_TRUE(signal.last.sending);
    EXPECT_FALSE(signal.last.receiving);
}

TEST_F(WatchingReactor, NoLongerCallsWhatWasRemoved) {
    Signal signal(reactor);
    signal.raise();
    signal.remove();
    EXPECT_FALSE(hasSomethingToDo());
    reactor.dispatch();
    EXPECT_EQ(signal.count, 0);
}

TEST_F(WatchingReactor, DoesNotCallWhatIsRemovedWhileItIsKnownToBeReady) {
    Signal one(reactor);
    Signal other(reactor);
    one.raise();
    other.raise();
    // Whichever is called first removes the other one.
    one.whenReady = [&] {
        one.lower();
        other.remove();
    };
    other.whenReady = [&] {
        other.lower();
        one.remove();
    };
    reactor.dispatch();
    EXPECT_EQ(one.count + other.count, 1);
}

TEST_F(WatchingReactor, DoesNotCallWhatANestedDispatchHasRemoved) {
    std::list<Signal> signals;
    int calls = 0;
    const auto whenReady = [&] {
        ++calls;
        if (calls == 1) {
            reactor.dispatch();
        } else {
            // The outer dispatch knows of all of them yet.
            signals.clear();
        }
    };
    for (int count = 0; count < 5; ++count) {
        Signal& signal = signals.emplace_back(reactor);
        signal.raise();
    }
    for (Signal& signal : signals)
        signal.whenReady = [step = whenReady] { step(); };
    reactor.dispatch();
    EXPECT_EQ(calls, 2);
    EXPECT_FALSE(hasSomethingToDo());
}

TEST_F(WatchingReactor, ServesMoreThanOneBatch) {
    std::list<Signal> signals;
    for (int count = 0; count < 200; ++count)
        signals.emplace_back(reactor).raise();
    // A single dispatch may end before, so as not to keep the windows waiting.
    for (int turns = 0; turns < 200 && hasSomethingToDo(); ++turns)
        reactor.dispatch();
    for (const Signal& signal : signals)
        EXPECT_EQ(signal.count, 1);
}

TEST_F(WatchingReactor, ReturnsThoughSomethingIsReadyAllTheTime) {
    Signal signal(reactor);
    signal.raise();
    signal.whenReady = [] {};
    reactor.dispatch();
    EXPECT_GE(signal.count, 1);
    EXPECT_TRUE(hasSomethingToDo());
}

TEST_F(WatchingReactor, TellsThatTheOtherEndIsGone) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    const Descriptor reading(ends[0]);
    Descriptor writing(ends[1]);
    struct Seen final : Readiness::Watched {
        bool broken = false;
        void ready(Readiness::Ready now) override { broken = now.broken; }
    } seen;
    reactor.add(reading.get(), {}, seen);
    writing.reset();
    reactor.dispatch();
    EXPECT_TRUE(seen.broken);
    reactor.remove(reading.get(), seen);
}

}  // namespace

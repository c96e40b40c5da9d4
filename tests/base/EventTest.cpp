#include "base/Event.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

namespace {

TEST(Event, DoesNothingWhileNobodyListens) {
    const Event<int> event;
    EXPECT_NO_THROW(event(1));
}

TEST(Event, CallsItsListenerWithWhatHasHappened) {
    std::string said;
    const Event<int, std::string&> event = [&said](int number, std::string& word) {
        said = std::to_string(number) + word;
        word = "seen";
    };
    std::string word = " words";
    event(2, word);
    EXPECT_EQ(said, "2 words");
    EXPECT_EQ(word, "seen");
}

TEST(Event, HasTheListenerThatWasSetLast) {
    int calls = 0;
    Event<> event = [&calls] { calls += 1; };
    event = [&calls] { calls += 10; };
    event();
    EXPECT_EQ(calls, 10);
    event = {};
    event();
    EXPECT_EQ(calls, 10);
}

TEST(Event, IsAsLargeAsTwoPointersWhateverListens) {
    static_assert(sizeof(Event<int>) == 2 * sizeof(void*));
    const std::string first(100, 'a');
    const std::string second(100, 'b');
    std::string said;
    const Event<> event = [first, second, &said] { said = first + second; };
    event();
    EXPECT_EQ(said, first + second);
}

TEST(Event, HasListenersOfItsOwnInEachCopy) {
    int last = 0;
    Event<> event = [&last, count = 0, more = std::string(100, 'a')]() mutable { last = ++count; };
    event();
    const Event<> copy = event;
    event();
    EXPECT_EQ(last, 2);
    event = {};
    copy();
    EXPECT_EQ(last, 2);
}

TEST(Event, IsEmptyWhenItHasBeenMovedFrom) {
    int calls = 0;
    Event<> event = [&calls, more = std::string(100, 'a')] { ++calls; };
    const Event<> taken = std::move(event);
    event();  // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(calls, 0);
    taken();
    EXPECT_EQ(calls, 1);
}

TEST(Event, EndsItsListenerWithItself) {
    const auto held = std::make_shared<int>(1);
    {
        Event<> event = [held] { (void)held; };
        const Event<> copy = event;
        EXPECT_EQ(held.use_count(), 3);
        event = [] {};
        EXPECT_EQ(held.use_count(), 2);
    }
    EXPECT_EQ(held.use_count(), 1);
}

TEST(Event, MayGetAnotherListenerWhileACopyOfItIsRaised) {
    std::string said;
    Event<> event;
    event = [&] {
        event = [&said] { said += "second"; };
        said += "first ";
    };
    const Event<> raised = event;
    raised();
    event();
    EXPECT_EQ(said, "first second");
}

}  // namespace

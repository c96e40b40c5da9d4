#include "platform/shared/StreamSocket.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>

namespace {

/// Whether the bytes of `queue` stand in memory of their own, outside of it.
bool holdsMemory(const SendQueue& queue) {
    const auto* const begin = reinterpret_cast<const char*>(&queue);
    const char* const bytes = queue.waiting().data();
    const bool inside = !std::less<>()(bytes, begin) && std::less<>()(bytes, begin + sizeof queue);
    return !inside;
}

TEST(SendQueue, IsEmptyAtFirst) {
    const SendQueue queue;
    EXPECT_TRUE(queue.empty());
    EXPECT_EQ(queue.size(), 0U);
    EXPECT_EQ(queue.waiting(), "");
}

TEST(SendQueue, KeepsBytesInOrder) {
    SendQueue queue;
    queue.append("one");
    queue.append("two");
    EXPECT_EQ(queue.waiting(), "onetwo");
    queue.remove(2);
    EXPECT_EQ(queue.waiting(), "etwo");
    queue.append("!");
    EXPECT_EQ(queue.waiting(), "etwo!");
    EXPECT_EQ(queue.size(), 5U);
    EXPECT_FALSE(queue.empty());
}

TEST(SendQueue, TakesNothingFromTheFront) {
    SendQueue queue;
    queue.append("one");
    queue.remove(0);
    EXPECT_EQ(queue.waiting(), "one");
}

TEST(SendQueue, IsEmptyWhenCleared) {
    SendQueue queue;
    queue.append("one");
    queue.remove(1);
    queue.clear();
    EXPECT_TRUE(queue.empty());
    queue.append("two");
    EXPECT_EQ(queue.waiting(), "two");
}

TEST(SendQueue, HoldsNoMemoryWhenItHasRunEmpty) {
    SendQueue queue;
    queue.append(std::string(100000, 'x'));
    ASSERT_TRUE(holdsMemory(queue));
    queue.remove(60000);
    queue.remove(40000);
    EXPECT_FALSE(holdsMemory(queue));
}

TEST(SendQueue, HoldsNoMemoryWhenCleared) {
    SendQueue queue;
    queue.append(std::string(100000, 'x'));
    queue.clear();
    EXPECT_FALSE(holdsMemory(queue));
}

TEST(SendQueue, BehavesLikeATextOfWhichTheFrontIsCutOff) {
    std::mt19937 random{1090};
    SendQueue queue;
    std::string expected;
    for (int round = 0; round < 20000; ++round) {
        if (random() % 2 == 0) {
            const std::string bytes(random() % 40, static_cast<char>(random()));
            queue.append(bytes);
            expected += bytes;
        } else {
            const std::size_t count = random() % (expected.size() + 1);
            queue.remove(count);
            expected.erase(0, count);
        }
        ASSERT_EQ(queue.size(), expected.size());
        ASSERT_EQ(queue.empty(), expected.empty());
        ASSERT_EQ(queue.waiting(), expected);
    }
}

}  // namespace

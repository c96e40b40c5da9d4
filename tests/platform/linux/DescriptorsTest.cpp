#include "platform/shared/StreamSocket.h"

#include "platform/linux/Descriptor.h"
#include "tests/platform/shared/Sockets.h"
#include "tests/support/linux/forked.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>

namespace {

rlimit descriptorLimit() {
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    return limit;
}

void setSoftLimit(rlim_t descriptors) {
    rlimit limit = descriptorLimit();
    limit.rlim_cur = descriptors;
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
}

TEST(StreamNetwork, RaisesTheLimitOfDescriptors) {
    EXPECT_TRUE(passesForked([] {
        SocketLoop loop;
        setSoftLimit(64);
        const StreamNetwork network(loop.readiness, loop);
        EXPECT_EQ(descriptorLimit().rlim_cur, descriptorLimit().rlim_max);
    }));
}

/// Two clients wait, and there is a descriptor for one of them alone.
class CrowdedListener {
public:
    CrowdedListener() {
        EXPECT_EQ((*listener)->Listen(0), std::nullopt);
        (*listener)->ConnectionRequest = [this](RequestId requestID) {
            accepted.push_back(std::make_unique<RecordedSocket>(network));
            EXPECT_TRUE((*accepted.back())->Accept(requestID));
        };
        serveOnceWithPlenty();
        first = speakingPeer((*listener)->LocalPort());
        second = speakingPeer((*listener)->LocalPort());
        spare = Descriptor(open("/dev/null", O_RDONLY | O_CLOEXEC));
        // The lowest free number is the next, so there is none but that one.
        const Descriptor next(open("/dev/null", O_RDONLY | O_CLOEXEC));
        setSoftLimit(static_cast<rlim_t>(next.get()) + 1);
    }

    void waitForClients(std::size_t count) {
        EXPECT_TRUE(loop.runUntil([&] { return accepted.size() >= count; }));
        EXPECT_EQ(accepted.size(), count);
    }

    SocketLoop loop;
    StreamNetwork network{loop.readiness, loop};
    std::optional<RecordedSocket> listener{std::in_place, network};
    std::vector<std::unique_ptr<RecordedSocket>> accepted;
    Peer first;
    Peer second;
    Descriptor spare;

private:
    /// A sanitizer needs descriptors of its own where it sees a kind of object for the first time.
    void serveOnceWithPlenty() {
        const Peer early = speakingPeer((*listener)->LocalPort());
        waitForClients(1);
        (*accepted.front())->Close();
        accepted.clear();
        const auto timer = loop.makeTimer();
        bool ticked = false;
        timer->tick = [&] { ticked = true; };
        timer->enable(std::chrono::milliseconds{1});
        EXPECT_TRUE(loop.runUntil([&] { return ticked; }));
        timer->disable();
    }
};

TEST(CrowdedListener, TakesTheNextClientWhenAConnectionGivesADescriptorBack) {
    EXPECT_TRUE(passesForked([] {
        CrowdedListener crowd;
        crowd.waitForClients(1);
        (*crowd.accepted.front())->Close();
        // At once, and not when it would have looked by itself.
        crowd.loop.readiness.dispatch();
        ASSERT_EQ(crowd.accepted.size(), 2U);
        EXPECT_TRUE((*crowd.accepted.back())->SendData("x"));
        EXPECT_EQ(crowd.second.receive(1), "x");
    }));
}

TEST(CrowdedListener, TakesTheNextClientWhenOthersGiveADescriptorBack) {
    EXPECT_TRUE(passesForked([] {
        CrowdedListener crowd;
        crowd.waitForClients(1);
        crowd.spare.reset();
        crowd.waitForClients(2);
    }));
}

TEST(CrowdedListener, IsNotAskedAgainAndAgain) {
    EXPECT_TRUE(passesForked([] {
        CrowdedListener crowd;
        crowd.waitForClients(1);
        // A client waits, and yet there is nothing to do before the next look.
        EXPECT_TRUE(crowd.loop.timers.nextDue().has_value());
        EXPECT_FALSE(crowd.loop.isReady());
        // The look itself finds no descriptor, and the next one is waited for.
        const auto due = crowd.loop.timers.nextDue();
        ASSERT_TRUE(crowd.loop.runUntil([&] { return crowd.loop.timers.nextDue() != due; }));
        ASSERT_TRUE(crowd.loop.runUntil([&] { return crowd.loop.timers.nextDue().has_value(); }));
        EXPECT_EQ(crowd.accepted.size(), 1U);
        crowd.spare.reset();
        crowd.waitForClients(2);
    }));
}

TEST(CrowdedListener, LooksNoMoreWhenNobodyWaits) {
    EXPECT_TRUE(passesForked([] {
        CrowdedListener crowd;
        crowd.waitForClients(1);
        (*crowd.accepted.front())->Close();
        crowd.waitForClients(2);
        EXPECT_TRUE(crowd.loop.runUntil([&] { return !crowd.loop.timers.nextDue(); }));
    }));
}

TEST(CrowdedListener, MayGoWhileItWaits) {
    EXPECT_TRUE(passesForked([] {
        CrowdedListener crowd;
        crowd.waitForClients(1);
        crowd.listener.reset();
        (*crowd.accepted.front())->Close();
        EXPECT_TRUE(crowd.loop.runUntil([&] { return !crowd.loop.timers.nextDue(); }));
    }));
}

TEST(CrowdedListener, MayBeClosedWhileItWaits) {
    EXPECT_TRUE(passesForked([] {
        CrowdedListener crowd;
        crowd.waitForClients(1);
        (*crowd.listener)->Close();
        crowd.spare.reset();
        EXPECT_TRUE(crowd.loop.runUntil([&] { return !crowd.loop.timers.nextDue(); }));
        EXPECT_EQ(crowd.accepted.size(), 1U);
        crowd.second.waitForEnd();
    }));
}

}  // namespace

#include "platform/shared/StreamSocket.h"

#include "tests/platform/linux/forked.h"
#include "tests/platform/shared/Sockets.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>

namespace {

using Descriptors = Sockets;

TEST_F(Descriptors, GoBackWhenTheOtherEndClosesThoughTheSocketLivesOn) {
    const std::size_t before = countDescriptors();
    Accepted pair(*this);
    EXPECT_EQ(countDescriptors(), before + 2);
    pair.peer.close();
    ASSERT_TRUE(loop.runUntil([&] { return !pair.socket.events.empty(); }));
    EXPECT_EQ(pair.socket->State(), SocketState::Closing);
    EXPECT_EQ(countDescriptors(), before);
}

TEST_F(Descriptors, GoBackWhenTheConnectionBreaksThoughTheSocketLivesOn) {
    const std::size_t before = countDescriptors();
    Accepted pair(*this);
    pair.peer.breakOff();
    ASSERT_TRUE(loop.runUntil([&] { return !pair.socket.events.empty(); }));
    EXPECT_EQ(countDescriptors(), before);
}

TEST_F(Descriptors, GoBackAtClose) {
    Accepted pair(*this);
    const std::size_t before = countDescriptors();
    pair.socket->Close();
    EXPECT_EQ(countDescriptors(), before - 1);
}

TEST_F(Descriptors, GoBackWithTheSocket) {
    const std::size_t before = countDescriptors();
    { const Accepted pair(*this); }
    EXPECT_EQ(countDescriptors(), before);
}

TEST_F(Descriptors, AreNotPassedOnToPrograms) {
    const Accepted pair(*this);
    EXPECT_NE(fcntl(pair.descriptor(), F_GETFD) & FD_CLOEXEC, 0);
}

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
        PollLoop loop;
        setSoftLimit(64);
        const StreamNetwork network(loop.reactor, loop);
        EXPECT_EQ(descriptorLimit().rlim_cur, descriptorLimit().rlim_max);
    }));
}

/// Two clients wait, and there is a descriptor for one of them alone.
class CrowdedListener {
public:
    CrowdedListener() {
        EXPECT_EQ((*listener)->Listen(0), std::nullopt);
        (*listener)->ConnectionRequest = [this](RequestId requestID) {
            accepted.push_back(std::make_unique<ToldSocket>(network));
            (*accepted.back())->Accept(requestID);
        };
        serveOnceWithPlenty();
        first = Peer::connectedTo((*listener)->LocalPort());
        second = Peer::connectedTo((*listener)->LocalPort());
        spare = Descriptor(open("/dev/null", O_RDONLY | O_CLOEXEC));
        // The lowest free number is the next, so there is none but that one.
        const Descriptor next(open("/dev/null", O_RDONLY | O_CLOEXEC));
        setSoftLimit(static_cast<rlim_t>(next.get()) + 1);
    }

    void waitForClients(std::size_t count) {
        EXPECT_TRUE(loop.runUntil([&] { return accepted.size() >= count; }));
        EXPECT_EQ(accepted.size(), count);
    }

    PollLoop loop;
    StreamNetwork network{loop.reactor, loop};
    std::optional<ToldSocket> listener{std::in_place, network};
    std::vector<std::unique_ptr<ToldSocket>> accepted;
    Peer first;
    Peer second;
    Descriptor spare;

private:
    /// A sanitizer needs descriptors of its own where it sees a kind of object for the first time.
    void serveOnceWithPlenty() {
        const Peer early = Peer::connectedTo((*listener)->LocalPort());
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
        crowd.loop.reactor.dispatch();
        ASSERT_EQ(crowd.accepted.size(), 2U);
        (*crowd.accepted.back())->SendData("x");
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
        pollfd entry{crowd.loop.reactor.descriptor(), POLLIN, 0};
        EXPECT_EQ(poll(&entry, 1, 0), 0);
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

#include "platform/shared/Readiness.h"

#include "tests/platform/shared/SocketLoop.h"
#include "tests/support/Peer.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <functional>
#include <list>
#include <new>
#include <string>
#include <utility>

namespace {

using systemSockets::Result;

/// One end of a connection that is watched, and the other one.
class WatchedSocket final : public Readiness::Watched {
public:
    WatchedSocket(Readiness& readiness, SocketHandle listener, Readiness::Interest interest)
        : peer(Peer::connectedTo(systemSockets::localPort(listener))),
          readiness(readiness),
          handle(systemSockets::accept(listener).socket) {
        EXPECT_NE(handle, systemSockets::noSocket);
        readiness.add(handle, interest, *this);
    }
    WatchedSocket(const WatchedSocket&) = delete;
    WatchedSocket& operator=(const WatchedSocket&) = delete;
    ~WatchedSocket() {
        remove();
        systemSockets::close(handle);
    }

    void change(Readiness::Interest interest) { readiness.change(handle, interest, *this); }
    void remove() {
        if (std::exchange(isWatched, false)) readiness.remove(handle, *this);
    }
    /// One read of so many bytes at most.
    systemSockets::Outcome receive(std::size_t most = 65536) const {
        std::string buffer(most, '\0');
        return systemSockets::receive(handle, buffer);
    }
    /// Sends until the system takes no more.
    void fill() const {
        const std::string block(65536, 'x');
        while (systemSockets::send(handle, block).bytes == block.size()) {
        }
    }

    Peer peer;
    std::function<void()> whenReady = [this] { (void)receive(); };
    int count = 0;
    Readiness::Ready last;

private:
    void ready(Readiness::Ready now) override {
        ++count;
        last = now;
        whenReady();
    }

    Readiness& readiness;
    SocketHandle handle;
    bool isWatched = true;
};

class WatchedSockets : public testing::Test {
protected:
    SocketLoop loop;
    Readiness& readiness = loop.readiness;
    SocketHandle listener = systemSockets::open().socket;

    WatchedSockets() { EXPECT_EQ(systemSockets::listen(listener, 0).result, Result::Done); }
    ~WatchedSockets() override { systemSockets::close(listener); }

    /// Lets everything happen that is due: what arrives later on another connection has.
    void serveWhatIsDue() {
        WatchedSocket other(readiness, listener, {.receiving = true});
        other.peer.send("x");
        ASSERT_TRUE(loop.runUntil([&] { return other.count > 0; }));
    }
};

TEST_F(WatchedSockets, AreCalledForWhatArrives) {
    WatchedSocket socket(readiness, listener, {.receiving = true});
    EXPECT_FALSE(loop.isReady());
    socket.peer.send("x");
    ASSERT_TRUE(loop.runUntil([&] { return socket.count > 0; }));
    EXPECT_TRUE(socket.last.receiving);
    EXPECT_FALSE(socket.last.sending);
    EXPECT_FALSE(socket.last.broken);
    serveWhatIsDue();
    EXPECT_EQ(socket.count, 1);
}

TEST_F(WatchedSockets, AreCalledForWhatTheyWaitForAlone) {
    WatchedSocket socket(readiness, listener, {});
    socket.peer.send("x");
    serveWhatIsDue();
    EXPECT_EQ(socket.count, 0);
    socket.whenReady = [&] { socket.change({}); };
    socket.change({.sending = true});
    ASSERT_TRUE(loop.runUntil([&] { return socket.count > 0; }));
    EXPECT_TRUE(socket.last.sending);
    EXPECT_FALSE(socket.last.receiving);
}

TEST_F(WatchedSockets, AreCalledForWhatArrivedBeforeTheyWaitedForIt) {
    WatchedSocket socket(readiness, listener, {});
    socket.peer.send("x");
    serveWhatIsDue();
    socket.change({.receiving = true});
    ASSERT_TRUE(loop.runUntil([&] { return socket.count > 0; }));
    EXPECT_TRUE(socket.last.receiving);
}

TEST_F(WatchedSockets, AreCalledThoughAnEventBesideWasBrokenOff) {
    WatchedSocket one(readiness, listener, {.receiving = true});
    WatchedSocket other(readiness, listener, {.receiving = true});
    for (WatchedSocket* const socket : {&one, &other}) {
        socket->whenReady = [socket] {
            (void)socket->receive();
            throw std::bad_alloc();
        };
        socket->peer.send("x");
    }
    EXPECT_TRUE(loop.runUntil([&] { return one.count == 1 && other.count == 1; }));
    one.peer.send("x");
    EXPECT_TRUE(loop.runUntil([&] { return one.count == 2; }));
}

TEST_F(WatchedSockets, AreCalledAgainUntilAllIsReceived) {
    WatchedSocket socket(readiness, listener, {.receiving = true});
    std::size_t received = 0;
    socket.whenReady = [&] { received += socket.receive(1).bytes; };
    socket.peer.send("abc");
    EXPECT_TRUE(loop.runUntil([&] { return received == 3; }));
}

TEST_F(WatchedSockets, AreCalledForTheEndUntilTheyGo) {
    WatchedSocket socket(readiness, listener, {.receiving = true});
    std::string seen;
    socket.whenReady = [&] {
        const auto outcome = socket.receive();
        seen += outcome.result == Result::Closed ? "end" : std::to_string(outcome.bytes);
        if (outcome.result == Result::Closed) socket.remove();
    };
    socket.peer.send("bye");
    socket.peer.finishSending();
    ASSERT_TRUE(loop.runUntil([&] { return seen.ends_with("end"); }));
    EXPECT_EQ(seen, "3end");
}

TEST_F(WatchedSockets, AreCalledWhenTheOtherEndHasMadeRoom) {
    WatchedSocket socket(readiness, listener, {});
    socket.fill();
    socket.whenReady = [&] { socket.change({}); };
    socket.change({.sending = true});
    serveWhatIsDue();
    ASSERT_EQ(socket.count, 0);
    ASSERT_TRUE(loop.runUntil(
        [&] {
            (void)socket.peer.receiveNow();
            return socket.count > 0;
        },
        socket.peer.handle()));
    EXPECT_TRUE(socket.last.sending);
}

TEST_F(WatchedSockets, AreCalledForABrokenConnectionWhateverTheyWaitFor) {
    WatchedSocket socket(readiness, listener, {});
    socket.whenReady = [&] { socket.remove(); };
    socket.peer.breakOff();
    ASSERT_TRUE(loop.runUntil([&] { return socket.count > 0; }));
    EXPECT_TRUE(socket.last.broken);
}

TEST_F(WatchedSockets, AreNoLongerCalledOnceTheyAreRemoved) {
    WatchedSocket socket(readiness, listener, {.receiving = true});
    socket.peer.send("x");
    socket.remove();
    serveWhatIsDue();
    EXPECT_EQ(socket.count, 0);
}

TEST_F(WatchedSockets, AreNotCalledThoughTheyWereReadyWhenTheyWereRemoved) {
    WatchedSocket one(readiness, listener, {.receiving = true});
    WatchedSocket other(readiness, listener, {.receiving = true});
    one.peer.send("x");
    other.peer.send("x");
    // Whichever is called first removes the other one.
    one.whenReady = [&] {
        (void)one.receive();
        other.remove();
    };
    other.whenReady = [&] {
        (void)other.receive();
        one.remove();
    };
    serveWhatIsDue();
    EXPECT_EQ(one.count + other.count, 1);
}

TEST_F(WatchedSockets, AreNotCalledOnceANestedDispatchHasRemovedThem) {
    std::list<WatchedSocket> sockets;
    int calls = 0;
    for (int count = 0; count < 5; ++count) {
        WatchedSocket& socket =
            sockets.emplace_back(readiness, listener, Readiness::Interest{.receiving = true});
        socket.whenReady = [&] {
            ++calls;
            (void)socket.receive();
            if (calls == 1) {
                ASSERT_TRUE(loop.runUntil([&] { return calls > 1; }));
            } else {
                // The outer dispatch may know of all of them yet.
                for (WatchedSocket& other : sockets)
                    other.remove();
            }
        };
    }
    for (WatchedSocket& socket : sockets)
        socket.peer.send("x");
    ASSERT_TRUE(loop.runUntil([&] { return calls > 0; }));
    serveWhatIsDue();
    EXPECT_EQ(calls, 2);
}

TEST_F(WatchedSockets, MayBeMany) {
    std::list<WatchedSocket> sockets;
    for (int count = 0; count < 200; ++count) {
        sockets.emplace_back(readiness, listener, Readiness::Interest{.receiving = true});
    }
    for (WatchedSocket& socket : sockets)
        socket.peer.send("x");
    for (const WatchedSocket& socket : sockets) {
        ASSERT_TRUE(loop.runUntil([&] { return socket.count > 0; }));
    }
    serveWhatIsDue();
    for (const WatchedSocket& socket : sockets)
        EXPECT_EQ(socket.count, 1);
}

TEST_F(WatchedSockets, DoNotKeepTheLoopThoughTheyAreReadyAllTheTime) {
    WatchedSocket socket(readiness, listener, {.receiving = true});
    socket.whenReady = [&] { (void)socket.receive(1); };
    while (socket.peer.sendNow(std::string(65536, 'x')) > 0) {
    }
    readiness.dispatch();
    EXPECT_TRUE(loop.isReady());
}

}  // namespace

#include "platform/windows/Reactor.h"

#include "tests/support/Peer.h"
#include "tests/support/waiting.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <list>
#include <string>

namespace {

/// A socket whose bytes never come to an end: it reads one at a time.
class Flood final : private Readiness::Watched {
public:
    explicit Flood(Reactor& reactor) : reactor(reactor) {
        const SocketHandle listener = systemSockets::open().socket;
        EXPECT_EQ(systemSockets::listen(listener, 0).result, systemSockets::Result::Done);
        peer = Peer::connectedTo(systemSockets::localPort(listener));
        socket = systemSockets::accept(listener).socket;
        systemSockets::close(listener);
        refill();
        reactor.add(socket, {.receiving = true}, *this);
    }
    ~Flood() {
        reactor.remove(socket, *this);
        systemSockets::close(socket);
    }
    Flood(const Flood&) = delete;
    Flood& operator=(const Flood&) = delete;

    int count = 0;

private:
    void ready(Readiness::Ready /*now*/) override {
        std::array<char, 1> byte{};
        (void)systemSockets::receive(socket, byte);
        if (++count % 1000 == 0) refill();
    }
    void refill() { (void)peer.sendNow(std::string(65536, 'x')); }

    Reactor& reactor;
    Peer peer;
    SocketHandle socket = systemSockets::noSocket;
};

/// The loop of windows as the system has it, until the condition holds.
template <typename Condition>
bool loopUntil(Condition condition) {
    const auto end = std::chrono::steady_clock::now() + waitLimit;
    MSG message{};
    while (!condition() && std::chrono::steady_clock::now() < end &&
           GetMessageW(&message, nullptr, 0, 0) > 0) {
        DispatchMessageW(&message);
    }
    return condition();
}

TEST(BusySockets, LetTimersTick) {
    systemSockets::prepare();
    Reactor reactor;
    // So many that there is a message of one of them all the time.
    std::list<Flood> floods;
    while (floods.size() < 30)
        floods.emplace_back(reactor);
    const Flood& last = floods.back();
    ASSERT_TRUE(loopUntil([&] { return last.count > 0; }));
    static int ticks = 0;
    const UINT_PTR timer =
        SetTimer(nullptr, 0, USER_TIMER_MINIMUM, [](HWND, UINT, UINT_PTR, DWORD) { ++ticks; });
    const int before = last.count;
    EXPECT_TRUE(loopUntil([] { return ticks > 10; }));
    EXPECT_GT(last.count, before);
    KillTimer(nullptr, timer);
}

}  // namespace

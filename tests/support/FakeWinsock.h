#pragma once

#include "base/Event.h"
#include "platform/EventLoop.h"
#include "platform/Winsock.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A socket without a network: what it is asked to do is kept, what happens to it is up to the
/// test. For what real sockets cannot be made to do: faults, chance and addresses elsewhere.
class FakeWinsock final : public Winsock {
public:
    SocketState state = SocketState::Closed;
    std::optional<SocketTrouble> listenTrouble;
    std::uint16_t listensOn = 0;
    Event<> listening;
    std::vector<RequestId> accepted;
    std::vector<std::pair<std::string, std::int32_t>> connects;
    std::vector<std::string> sent;
    bool sendFails = false;
    /// A send finds the connection lost.
    bool losesSends = false;
    /// No connection can begin.
    bool refuses = false;
    bool reading = true;
    /// Bytes are under way.
    bool busy = false;
    /// What the client of a request has said.
    std::string peeked;

    /// One read gives these bytes.
    void arrive(std::string_view bytes) {
        arrived = bytes;
        DataArrival(bytes.size());
    }
    void succeedConnecting() {
        state = SocketState::Connected;
        Connected();
    }
    void lose() {
        state = SocketState::Closing;
        ConnectionLost();
    }

    [[nodiscard]] SocketState State() const override { return state; }
    [[nodiscard]] std::optional<SocketTrouble> Listen(std::uint16_t localPort) override {
        listensOn = localPort;
        listening();
        return listenTrouble;
    }
    [[nodiscard]] std::uint16_t LocalPort() const override { return listensOn; }
    [[nodiscard]] std::string_view PeekData() override { return peeked; }
    [[nodiscard]] bool Accept(RequestId requestID) override {
        if (state != SocketState::Closed) return false;
        accepted.push_back(requestID);
        state = SocketState::Connected;
        return true;
    }
    [[nodiscard]] bool Connect(std::string_view remoteHost, std::int32_t remotePort) override {
        connects.emplace_back(remoteHost, remotePort);
        if (state != SocketState::Closed || refuses) return false;
        state = SocketState::Connecting;
        return true;
    }
    void Close() override { state = SocketState::Closed; }
    [[nodiscard]] bool SendData(std::string_view data) override {
        if (losesSends) lose();
        if (state != SocketState::Connected || sendFails) return false;
        sent.emplace_back(data);
        return true;
    }
    [[nodiscard]] std::string_view GetData() override { return arrived; }
    [[nodiscard]] bool IsQuiet() const override { return !busy; }
    void SetReading(bool wanted) override { reading = wanted; }

private:
    std::string arrived;
};

class FakeNetwork final : public Network {
public:
    /// All that were made, in order.
    std::vector<FakeWinsock*> sockets;

    [[nodiscard]] std::unique_ptr<Winsock> makeWinsock() override {
        auto socket = std::make_unique<FakeWinsock>();
        sockets.push_back(socket.get());
        return socket;
    }
};

/// A timer whose time the test lets pass.
class FakeTimer final : public Timer {
public:
    bool enabled = false;
    bool resting = false;
    std::chrono::milliseconds interval{0};

    void enable(std::chrono::milliseconds newInterval) override {
        enableAtRest(newInterval);
        resting = false;
    }
    void enableAtRest(std::chrono::milliseconds newInterval) override {
        enabled = true;
        resting = true;
        interval = newInterval;
    }
    void disable() override { enabled = false; }
    void rest() override { resting = true; }
    void wake() override { resting = false; }

    /// The interval is over.
    void pass() const {
        if (enabled && !resting) tick();
    }
};

class FakeLoop final : public EventLoop {
public:
    std::vector<FakeTimer*> timers;
    /// What is due when somebody gives the loop the next turn.
    Event<> duringTurn;
    int turns = 0;

    [[nodiscard]] std::unique_ptr<Timer> makeTimer() override {
        auto timer = std::make_unique<FakeTimer>();
        timers.push_back(timer.get());
        return timer;
    }
    void turn() override {
        ++turns;
        std::exchange(duringTurn, Event<>())();
    }
};

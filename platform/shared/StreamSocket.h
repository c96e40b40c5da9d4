#pragma once

#include "platform/EventLoop.h"
#include "platform/Winsock.h"
#include "platform/shared/Readiness.h"
#include "platform/shared/systemSockets.h"

#include <array>
#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Bytes that wait to be sent. Taking from the front costs no more than was taken, however much
/// waits, and an empty queue holds no memory.
class SendQueue {
public:
    /// How many bytes wait.
    [[nodiscard]] std::size_t size() const { return bytes.size() - sent; }
    [[nodiscard]] bool empty() const { return size() == 0; }
    /// All bytes that wait, in order. Valid until the queue changes.
    [[nodiscard]] std::string_view waiting() const { return std::string_view(bytes).substr(sent); }

    /// Adds to the end.
    void append(std::string_view data) { bytes += data; }
    /// Removes the first `count` bytes, at most all.
    void remove(std::size_t count);
    /// Removes all bytes.
    void clear();

private:
    std::string bytes;
    /// How much of the front has gone already.
    std::size_t sent = 0;
};

class StreamNetwork;

/// A socket of whichever system it is. Each time that it is readable one read is made, at once, and
/// is one `DataArrival`.
class StreamSocket final : public Winsock, private Readiness::Watched {
public:
    /// A closed socket. It has to end before the network.
    explicit StreamSocket(StreamNetwork& network) : network(network) {}
    ~StreamSocket() override;

    [[nodiscard]] SocketState State() const override { return state; }
    [[nodiscard]] std::optional<SocketTrouble> Listen(std::uint16_t localPort) override;
    [[nodiscard]] std::uint16_t LocalPort() const override;
    [[nodiscard]] std::string_view PeekData() override;
    [[nodiscard]] bool Accept(RequestId requestID) override;
    [[nodiscard]] bool Connect(std::string_view remoteHost, std::int32_t remotePort) override;
    void Close() override;
    [[nodiscard]] bool SendData(std::string_view data) override;
    [[nodiscard]] std::string_view GetData() override;
    [[nodiscard]] bool IsQuiet() const override;
    void SetReading(bool wanted) override;

    /// Tries again to take clients, after the system had no descriptor for one.
    void resumeListening();

private:
    void ready(Readiness::Ready now) override;
    void takeRequest();
    void finishConnect(bool broken);
    void receive();
    void drain();
    void release(SocketState afterwards);
    void lose(SocketState afterwards);
    void watch(SocketHandle opened, SocketState connection);
    void updateInterest();
    [[nodiscard]] Readiness::Interest interest() const;

    StreamNetwork& network;
    SocketHandle handle = systemSockets::noSocket;
    SocketState state = SocketState::Closed;
    bool reading = true;
    SendQueue queue;

    friend StreamNetwork;
};

/// What the sockets of the process share: the readiness that they wait for, the buffer of all
/// reads, and the descriptors, of which the system may run out. A request is named by the socket
/// that the system has made for it.
class StreamNetwork final : public Network {
public:
    /// Both have to outlive it.
    StreamNetwork(Readiness& readiness, EventLoop& loop);
    ~StreamNetwork() override;

    [[nodiscard]] std::unique_ptr<Winsock> makeWinsock() override;

private:
    friend StreamSocket;

    class Newcomer;

    static constexpr std::size_t largestRead = std::size_t{64} * 1024;

    /// Raises the request of a client, which is dropped unless somebody accepts it. False while the
    /// client has not said anything yet.
    [[nodiscard]] bool announce(StreamSocket& listener, SocketHandle client);
    /// Announces the client as soon as it says something.
    void awaitFirstBytes(StreamSocket& listener, SocketHandle client);
    template <typename Condition>
    void dropNewcomersThat(Condition condition);
    /// Drops those who have connected to `listener` and said nothing.
    void dropNewcomersOf(const StreamSocket& listener);
    /// Gives a descriptor back, and lets a listener that waits for one try again.
    void close(SocketHandle socket);
    void tryAgain();
    /// Has `listener` try again when there may be a descriptor for its next client.
    void waitForDescriptor(StreamSocket& listener);
    void forget(const StreamSocket& listener);

    Readiness& readiness;
    std::array<char, largestRead> readBuffer;
    /// The part of the buffer that the running event is about.
    std::string_view currentRead;
    /// Clients that have not said anything yet.
    std::map<SocketHandle, std::unique_ptr<Newcomer>> newcomers;
    std::unique_ptr<Timer> silence;
    /// Connections that were announced and not accepted yet.
    std::vector<RequestId> requests;
    StreamSocket* starving = nullptr;
    /// Descriptors that others give back are not seen, so a starving listener looks by itself too.
    std::unique_ptr<Timer> retry;
};

#pragma once

#include "platform/Winsock.h"
#include "platform/linux/EpollNetwork.h"
#include "platform/linux/Reactor.h"
#include "platform/shared/SendQueue.h"

/// A socket in the reactor's set. Each time that it is readable one read is made, at once, and is
/// one `DataArrival`.
class EpollSocket final : public Winsock, private Reactor::Watched {
public:
    explicit EpollSocket(EpollNetwork& network) : network(network) {}
    ~EpollSocket() override;

    [[nodiscard]] SocketState State() const override { return state; }
    [[nodiscard]] std::optional<SocketTrouble> Listen(std::uint16_t localPort) override;
    [[nodiscard]] std::uint16_t LocalPort() const override;
    void Accept(RequestId requestID) override;
    void Connect(std::string_view remoteHost, std::int32_t remotePort) override;
    void Close() override;
    void SendData(std::string_view data) override;
    [[nodiscard]] std::string_view GetData() override { return arrived; }
    void SetReading(bool wanted) override;

    /// Tries again to take clients, after the system had no descriptor for one.
    void resumeListening();

private:
    void ready(std::uint32_t events) override;
    void takeRequests();
    void finishConnect();
    void receive();
    void drain();
    void release(SocketState afterwards);
    void lose(SocketState afterwards);
    void failUnlessClosed() const;
    void watch(SocketState connection);
    [[nodiscard]] std::uint32_t wantedEvents() const;

    EpollNetwork& network;
    int descriptor = -1;
    SocketState state = SocketState::Closed;
    bool reading = true;
    std::string_view arrived;
    SendQueue queue;
};

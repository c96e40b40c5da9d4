#pragma once

#include "platform/Winsock.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

/// A socket that takes down what it is told by events.
class ToldSocket {
public:
    explicit ToldSocket(Network& network) : socket(network.makeWinsock()) {
        socket->ConnectionRequest = [this](RequestId) { events.emplace_back("request"); };
        socket->Connected = [this] { events.emplace_back("connected"); };
        socket->ConnectionLost = [this] { events.emplace_back("lost"); };
        socket->SendProgress = [this](std::size_t sent, std::size_t remaining) {
            progress.emplace_back(sent, remaining);
        };
        socket->DataArrival = [this](std::size_t bytesTotal) {
            arrivals.push_back(bytesTotal);
            received += socket->GetData();
        };
    }

    ToldSocket(const ToldSocket&) = delete;
    ToldSocket& operator=(const ToldSocket&) = delete;

    [[nodiscard]] Winsock* operator->() const { return socket.get(); }

    /// How many bytes have gone to the system.
    [[nodiscard]] std::size_t sent() const {
        std::size_t sum = 0;
        for (const auto& [now, remaining] : progress)
            sum += now;
        return sum;
    }

    std::vector<std::string> events;
    std::vector<std::pair<std::size_t, std::size_t>> progress;
    std::vector<std::size_t> arrivals;
    std::string received;

private:
    std::unique_ptr<Winsock> socket;
};

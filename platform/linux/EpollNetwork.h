#pragma once

#include "platform/EventLoop.h"
#include "platform/Winsock.h"
#include "platform/linux/Reactor.h"

#include <array>
#include <memory>
#include <set>
#include <string_view>

class EpollSocket;

/// The sockets of the process: their reactor, the buffer that all reads go through, and the
/// descriptors, of which the system may run out.
class EpollNetwork final : public Network {
public:
    /// Raises the soft limit of descriptors to the hard one.
    EpollNetwork(Reactor& reactor, EventLoop& loop);
    ~EpollNetwork() override;

    [[nodiscard]] std::unique_ptr<Winsock> makeWinsock() override;

private:
    friend EpollSocket;

    static constexpr std::size_t largestRead = 64 * 1024;

    /// Gives a descriptor back, and lets a listener that waits for one try again.
    void closeDescriptor(int descriptor);
    /// `listener` could not take a client for want of a descriptor.
    void waitForDescriptor(EpollSocket& listener);
    void forget(const EpollSocket& listener);

    Reactor& reactor;
    std::array<char, largestRead> readBuffer;
    /// Connections that were announced and not accepted yet.
    std::set<RequestId> requests;
    EpollSocket* starving = nullptr;
    /// Descriptors that others give back are not seen, so a starving listener looks by itself too.
    std::unique_ptr<Timer> retry;
};

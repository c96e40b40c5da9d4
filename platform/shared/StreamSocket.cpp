#include "platform/shared/StreamSocket.h"

#include "base/Failure.h"
#include "platform/shared/runEvent.h"

#include <charconv>
#include <chrono>
#include <new>
#include <utility>

using systemSockets::NewSocket;
using systemSockets::noSocket;
using systemSockets::Outcome;
using systemSockets::Result;

namespace {

/// How often a listener looks for a descriptor that others have given back.
constexpr std::chrono::milliseconds retryInterval{1000};

/// A client that says nothing for so many of these intervals is dropped, within a minute.
constexpr std::chrono::seconds silenceInterval{10};
constexpr int mostSilentIntervals = 6;

/// Whether the connection cannot go on.
bool isFailure(const Outcome& outcome) {
    return outcome.result != Result::Done && outcome.result != Result::WouldBlock;
}

/// The number at the front of a dotted address, which is taken off.
std::optional<std::uint32_t> takeByte(std::string_view& dotted) {
    std::uint8_t value = 0;
    const char* const end = dotted.data() + dotted.size();
    const auto [stop, error] = std::from_chars(dotted.data(), end, value);
    if (error != std::errc()) return std::nullopt;
    const auto digits = static_cast<std::size_t>(stop - dotted.data());
    // Some take a number that begins with a zero for an octal one.
    if (digits > 1 && dotted.front() == '0') return std::nullopt;
    dotted.remove_prefix(digits);
    return value;
}

/// The dotted IPv4 address that `dotted` is.
std::optional<std::uint32_t> addressIn(std::string_view dotted) {
    constexpr unsigned bitsPerByte = 8;
    auto address = takeByte(dotted);
    for (int part = 1; address && part < 4; ++part) {
        if (!dotted.starts_with('.')) return std::nullopt;
        dotted.remove_prefix(1);
        const auto byte = takeByte(dotted);
        if (!byte) return std::nullopt;
        address = *address << bitsPerByte | *byte;
    }
    return dotted.empty() ? address : std::nullopt;
}

}  // namespace

void SendQueue::remove(std::size_t count) {
    sent += count;
    if (empty()) {
        clear();
    } else if (sent > bytes.size() / 2) {
        bytes.erase(0, sent);
        sent = 0;
    }
}

void SendQueue::clear() {
    // An assignment would keep the memory.
    std::string().swap(bytes);
    sent = 0;
}

StreamSocket::~StreamSocket() {
    network.forget(*this);
    StreamSocket::Close();
}

std::optional<SocketTrouble> StreamSocket::Listen(std::uint16_t localPort) {
    need(state == SocketState::Closed, "the socket is in use");
    const NewSocket opened = systemSockets::open();
    if (opened.socket == noSocket) return systemSockets::troubleOf(opened.outcome.error);
    const Outcome outcome = systemSockets::listen(opened.socket, localPort);
    if (isFailure(outcome)) {
        network.close(opened.socket);
        return systemSockets::troubleOf(outcome.error);
    }
    watch(opened.socket, SocketState::Listening);
    return std::nullopt;
}

std::uint16_t StreamSocket::LocalPort() const {
    return state == SocketState::Listening ? systemSockets::localPort(handle) : std::uint16_t{0};
}

bool StreamSocket::Accept(RequestId requestID) {
    if (state != SocketState::Closed) return false;
    if (std::erase(network.requests, requestID) == 0) return false;
    watch(requestID, SocketState::Connected);
    return true;
}

bool StreamSocket::Connect(std::string_view remoteHost, std::int32_t remotePort) {
    if (state != SocketState::Closed) return false;
    const auto host = addressIn(remoteHost);
    const auto port = checked<std::uint16_t>(remotePort);
    if (!host || !port) return false;
    const SocketHandle opened = systemSockets::open().socket;
    if (opened == noSocket) return false;
    if (isFailure(systemSockets::connect(opened, *host, *port))) {
        network.close(opened);
        state = SocketState::Error;
        return false;
    }
    watch(opened, SocketState::Connecting);
    return true;
}

void StreamSocket::Close() { release(SocketState::Closed); }

bool StreamSocket::SendData(std::string_view data) {
    if (state != SocketState::Connected) return false;
    if (data.empty()) return true;
    std::size_t sent = 0;
    if (queue.empty()) {
        const Outcome outcome = systemSockets::send(handle, data);
        if (isFailure(outcome)) {
            lose(SocketState::Error);
            return false;
        }
        sent = outcome.bytes;
    }
    if (sent < data.size()) {
        const bool first = queue.empty();
        try {
            queue.append(data.substr(sent));
        } catch (const std::bad_alloc&) {
            // What comes after a piece that is missing would be taken for something else.
            lose(SocketState::Error);
            throw;
        }
        if (first) updateInterest();
    }
    SendProgress(sent, queue.size());
    return true;
}

std::string_view StreamSocket::PeekData() { return network.currentRead; }

std::string_view StreamSocket::GetData() { return network.currentRead; }

bool StreamSocket::IsQuiet() const {
    if (state != SocketState::Connected) return true;
    std::array<char, 1> byte{};
    return queue.empty() && systemSockets::peek(handle, byte).result != Result::Done;
}

void StreamSocket::SetReading(bool wanted) {
    if (reading == wanted) return;
    reading = wanted;
    if (state == SocketState::Connected) updateInterest();
}

void StreamSocket::resumeListening() {
    if (state == SocketState::Listening) updateInterest();
}

void StreamSocket::ready(Readiness::Ready now) {
    switch (state) {
        case SocketState::Listening: takeRequest(); break;
        case SocketState::Connecting: finishConnect(now.broken); break;
        default: {
            if (now.sending && !queue.empty()) drain();
            if (state != SocketState::Connected) return;
            if (reading && (now.receiving || now.broken)) {
                receive();
            } else if (now.broken) {
                lose(SocketState::Error);
            }
        }
    }
}

/// Takes one client, so that others get their turn before the next.
void StreamSocket::takeRequest() {
    const auto [outcome, client, host] = systemSockets::accept(handle);
    if (outcome.result == Result::OutOfDescriptors) {
        network.readiness.change(handle, {}, *this);
        network.waitForDescriptor(*this);
    }
    // There may be none, or it has gone already.
    if (client == noSocket) return;
    if (!isPrivate(host) && !isIn(systemSockets::ownNetworks(), host)) {
        network.close(client);
    } else if (!network.announce(*this, client)) {
        network.awaitFirstBytes(*this, client);
    }
}

void StreamSocket::finishConnect(bool broken) {
    if (broken) {
        lose(SocketState::Error);
        return;
    }
    state = SocketState::Connected;
    updateInterest();
    Connected();
}

void StreamSocket::receive() {
    auto& buffer = network.readBuffer;
    const Outcome outcome = systemSockets::receive(handle, buffer);
    switch (outcome.result) {
        case Result::Done:
            network.currentRead = {buffer.data(), outcome.bytes};
            DataArrival(outcome.bytes);
            network.currentRead = {};
            break;
        case Result::WouldBlock: break;
        case Result::Closed: lose(SocketState::Closing); break;
        default: lose(SocketState::Error);
    }
}

void StreamSocket::drain() {
    const Outcome outcome = systemSockets::send(handle, queue.waiting());
    if (outcome.result == Result::WouldBlock) return;
    if (isFailure(outcome)) {
        lose(SocketState::Error);
        return;
    }
    queue.remove(outcome.bytes);
    if (queue.empty()) updateInterest();
    SendProgress(outcome.bytes, queue.size());
}

void StreamSocket::watch(SocketHandle opened, SocketState connection) {
    handle = opened;
    state = connection;
    network.readiness.add(handle, interest(), *this);
}

void StreamSocket::updateInterest() { network.readiness.change(handle, interest(), *this); }

Readiness::Interest StreamSocket::interest() const {
    if (state == SocketState::Connecting) return {.sending = true};
    return {.receiving = reading, .sending = !queue.empty()};
}

void StreamSocket::release(SocketState afterwards) {
    if (state == SocketState::Listening) network.dropNewcomersOf(*this);
    state = afterwards;
    reading = true;
    queue.clear();
    if (handle == noSocket) return;
    network.readiness.remove(handle, *this);
    network.close(std::exchange(handle, noSocket));
}

void StreamSocket::lose(SocketState afterwards) {
    release(afterwards);
    ConnectionLost();
}

/// A client that has connected, until it says something.
class StreamNetwork::Newcomer final : private Readiness::Watched {
public:
    Newcomer(StreamNetwork& network, StreamSocket& listener, SocketHandle handle)
        : listener(listener), handle(handle), network(network) {
        network.readiness.add(handle, {.receiving = true}, *this);
    }
    ~Newcomer() { network.readiness.remove(handle, *this); }
    Newcomer(const Newcomer&) = delete;
    Newcomer& operator=(const Newcomer&) = delete;

    StreamSocket& listener;
    /// How many intervals it has been silent for.
    int silentIntervals = 0;

private:
    // This may be the end of the object.
    void ready(Readiness::Ready /*now*/) override { (void)network.announce(listener, handle); }

    const SocketHandle handle;
    StreamNetwork& network;
};

StreamNetwork::StreamNetwork(Readiness& readiness, EventLoop& loop)
    : readiness(readiness), silence(loop.makeTimer()), retry(loop.makeTimer()) {
    systemSockets::prepare();
    silence->tick = [this] {
        dropNewcomersThat(
            [](Newcomer& newcomer) { return ++newcomer.silentIntervals >= mostSilentIntervals; });
    };
    retry->tick = [this] {
        tryAgain();
        if (starving == nullptr) retry->disable();
    };
}

StreamNetwork::~StreamNetwork() = default;

std::unique_ptr<Winsock> StreamNetwork::makeWinsock() {
    return std::make_unique<StreamSocket>(*this);
}

void StreamNetwork::close(SocketHandle socket) {
    systemSockets::close(socket);
    tryAgain();
}

void StreamNetwork::tryAgain() {
    if (starving != nullptr) std::exchange(starving, nullptr)->resumeListening();
}

void StreamNetwork::waitForDescriptor(StreamSocket& listener) {
    starving = &listener;
    retry->enable(retryInterval);
}

void StreamNetwork::forget(const StreamSocket& listener) {
    if (starving == &listener) starving = nullptr;
}

bool StreamNetwork::announce(StreamSocket& listener, SocketHandle client) {
    const Outcome said = systemSockets::peek(client, readBuffer);
    if (said.result == Result::WouldBlock) return false;
    // A timer that runs costs each wait of the loop something.
    if (newcomers.erase(client) > 0 && newcomers.empty()) silence->disable();
    if (said.result == Result::Done) {
        requests.push_back(client);
        currentRead = {readBuffer.data(), said.bytes};
        runEvent([&] { listener.ConnectionRequest(client); });
        currentRead = {};
        if (std::erase(requests, client) == 0) return true;
    }
    close(client);
    return true;
}

void StreamNetwork::awaitFirstBytes(StreamSocket& listener, SocketHandle client) {
    if (newcomers.empty()) silence->enable(silenceInterval);
    newcomers.emplace(client, std::make_unique<Newcomer>(*this, listener, client));
}

template <typename Condition>
void StreamNetwork::dropNewcomersThat(Condition condition) {
    for (auto next = newcomers.begin(); next != newcomers.end();) {
        const auto entry = next++;
        if (!condition(*entry->second)) continue;
        const SocketHandle client = entry->first;
        newcomers.erase(entry);
        close(client);
    }
    if (newcomers.empty()) silence->disable();
}

void StreamNetwork::dropNewcomersOf(const StreamSocket& listener) {
    dropNewcomersThat([&](const Newcomer& newcomer) { return &newcomer.listener == &listener; });
}

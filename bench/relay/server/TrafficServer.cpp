#include "bench/relay/server/TrafficServer.h"

#include "bench/relay/server/traffic.h"
#include "bench/relay/system/BenchError.h"

#include <algorithm>
#include <array>
#include <charconv>

#include <sys/epoll.h>
#include <sys/socket.h>

namespace {

std::int64_t countIn(std::string_view command) {
    std::int64_t count = 0;
    std::from_chars(command.data() + traffic::sink.size(), command.data() + command.size(), count);
    return count;
}

}  // namespace

TrafficServer::TrafficServer(Listener ownListener, ServerCounters& sharedCounters)
    : listener(std::move(ownListener)),
      counters(sharedCounters),
      epoll(epoll_create1(EPOLL_CLOEXEC)),
      buffer(traffic::blockSize),
      block(traffic::block()) {
    if (epoll.get() < 0) throwSystemError("cannot make an epoll set");
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.fd = listener.socket.get();
    epoll_ctl(epoll.get(), EPOLL_CTL_ADD, listener.socket.get(), &event);
}

void TrafficServer::run() {
    std::array<epoll_event, 64> events{};
    for (;;) {
        const int count =
            epoll_wait(epoll.get(), events.data(), static_cast<int>(events.size()), -1);
        for (int index = 0; index < count; ++index) {
            const epoll_event& event = events[static_cast<std::size_t>(index)];
            if (event.data.fd == listener.socket.get()) {
                acceptOne();
                continue;
            }
            Connection& connection = connections[static_cast<std::size_t>(event.data.fd)];
            if ((event.events & (EPOLLERR | EPOLLHUP)) != 0) {
                close(connection);
                continue;
            }
            if ((event.events & EPOLLIN) != 0) read(connection);
            if ((event.events & EPOLLOUT) != 0 && connection.mode == Mode::Source) {
                sendBlocks(connection);
            }
        }
    }
}

void TrafficServer::acceptOne() {
    Descriptor socket(
        accept4(listener.socket.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    if (socket.get() < 0) return;
    setNoDelayAndReset(socket.get());
    const auto number = static_cast<std::size_t>(socket.get());
    if (connections.size() <= number) connections.resize(number + 1);

    epoll_event event{};
    event.events = EPOLLIN;
    event.data.fd = socket.get();
    epoll_ctl(epoll.get(), EPOLL_CTL_ADD, socket.get(), &event);
    connections[number].socket = std::move(socket);
    connections[number].mode = Mode::Messages;
    ++counters.openConnections;
}

void TrafficServer::close(Connection& connection) {
    if (connection.mode == Mode::Closed) return;
    connection = Connection{};
    --counters.openConnections;
}

void TrafficServer::read(Connection& connection) {
    const auto count = recv(connection.socket.get(), buffer.data(), buffer.size(), 0);
    if (count < 0 && errno == EAGAIN) return;
    if (count <= 0) return close(connection);

    if (connection.mode == Mode::Sink) {
        connection.remaining -= count;
        if (connection.remaining > 0) return;
        connection.mode = Mode::Messages;
        send(connection, traffic::sinkDone);
    } else if (connection.mode == Mode::Messages) {
        std::string_view arrived(buffer.data(), static_cast<std::size_t>(count));
        // A message that comes in one piece is answered from where it lies.
        if (connection.partOfMessage.empty() && arrived.ends_with(traffic::messageEnd)) {
            takeMessage(connection, arrived);
            return;
        }
        connection.partOfMessage += arrived;
        if (!connection.partOfMessage.ends_with(traffic::messageEnd)) return;
        takeMessage(connection, std::exchange(connection.partOfMessage, {}));
    }
}

void TrafficServer::releaseHeld() {
    for (Connection& connection : connections) {
        if (connection.mode == Mode::Hold) close(connection);
    }
}

void TrafficServer::takeMessage(Connection& connection, std::string_view message) {
    if (message.starts_with(traffic::sink)) {
        connection.mode = Mode::Sink;
        connection.remaining = countIn(message);
        send(connection, traffic::sinkReady);
    } else if (message.starts_with(traffic::source)) {
        connection.mode = Mode::Source;
        connection.remaining = countIn(message);
        listenFor(connection, EPOLLIN | EPOLLOUT);
    } else if (message == traffic::hold) {
        connection.mode = Mode::Hold;
        listenFor(connection, 0);
        send(connection, message);
    } else if (message == traffic::release) {
        releaseHeld();
        send(connection, message);
    } else {
        send(connection, message);
    }
}

void TrafficServer::sendBlocks(Connection& connection) {
    const auto blockSize = static_cast<std::int64_t>(block.size());
    while (connection.remaining > 0) {
        // What remains tells how far the current block has got.
        const std::int64_t rest = (connection.remaining - 1) % blockSize + 1;
        const std::string_view part =
            std::string_view(block).substr(static_cast<std::size_t>(blockSize - rest));
        const auto sent = ::send(connection.socket.get(), part.data(), part.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno == EAGAIN) return;
        if (sent < 0) return close(connection);
        connection.remaining -= sent;
        counters.sourceBytes += sent;
    }
    connection.mode = Mode::Messages;
    listenFor(connection, EPOLLIN);
}

void TrafficServer::send(Connection& connection, std::string_view bytes) {
    // Answers are short, and no second one is asked for before the first has been read: what does
    // not fit at once means that the other side has broken the agreement.
    const auto sent = ::send(connection.socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent != static_cast<ssize_t>(bytes.size())) close(connection);
}

void TrafficServer::listenFor(Connection& connection, std::uint32_t events) {
    epoll_event event{};
    event.events = events;
    event.data.fd = connection.socket.get();
    epoll_ctl(epoll.get(), EPOLL_CTL_MOD, connection.socket.get(), &event);
}

#include "bench/relay/server/TrafficServer.h"

#include "bench/relay/system/BenchError.h"
#include "bench/relay/system/socketTools.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include <sys/epoll.h>
#include <sys/socket.h>

namespace {

/// All commands that have a number have it behind three letters and a blank.
std::int64_t numberIn(std::string_view command) {
    std::int64_t number = 0;
    const char* const end = command.data() + command.size();
    std::from_chars(command.data() + traffic::sink.size(), end, number);
    return number;
}

}  // namespace

TrafficServer::TrafficServer(Server accepting, ServerFacts& facts)
    : listener(std::move(accepting)),
      facts(facts),
      epoll(epoll_create1(EPOLL_CLOEXEC)),
      buffer(traffic::blockSize),
      block(traffic::block()),
      peerToPeer(traffic::peerToPeerFromServer()) {
    if (epoll.get() < 0) throwSystemError("cannot make an epoll set");
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.fd = listener.handle();
    epoll_ctl(epoll.get(), EPOLL_CTL_ADD, listener.handle(), &event);
}

void TrafficServer::run() {
    std::array<epoll_event, 64> events{};
    for (;;) {
        const int count =
            epoll_wait(epoll.get(), events.data(), static_cast<int>(events.size()), -1);
        for (int index = 0; index < count; ++index) {
            const epoll_event& event = events[static_cast<std::size_t>(index)];
            if (event.data.fd == listener.handle()) {
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
    Descriptor socket(accept4(listener.handle(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    if (socket.get() < 0) return;
    setNoDelayAndReset(socket.get());
    const auto number = static_cast<std::size_t>(socket.get());
    if (connections.size() <= number) connections.resize(number + 1);

    epoll_event event{};
    event.events = EPOLLIN;
    event.data.fd = socket.get();
    epoll_ctl(epoll.get(), EPOLL_CTL_ADD, socket.get(), &event);
    connections[number].socket = std::move(socket);
    connections[number].mode = Mode::Lines;
    ++facts.openConnections;
}

void TrafficServer::close(Connection& connection) {
    if (connection.mode == Mode::Closed) return;
    connection = Connection{};
    --facts.openConnections;
}

void TrafficServer::read(Connection& connection) {
    const auto count = recv(connection.socket.get(), buffer.data(), buffer.size(), 0);
    if (count < 0 && errno == EAGAIN) return;
    if (count <= 0) return close(connection);

    if (connection.mode == Mode::Sink) {
        connection.remaining -= count;
        if (connection.remaining > 0) return;
        connection.mode = Mode::Lines;
        send(connection, traffic::sinkDone);
    } else if (connection.mode == Mode::Lines || connection.mode == Mode::Talk) {
        const std::string_view arrived(buffer.data(), static_cast<std::size_t>(count));
        // What comes in one piece is answered from where it lies.
        if (connection.part.empty() && isWhole(connection, arrived)) {
            take(connection, arrived);
            return;
        }
        connection.part += arrived;
        if (!isWhole(connection, connection.part)) return;
        take(connection, std::exchange(connection.part, {}));
    }
}

void TrafficServer::releaseHeld() {
    for (Connection& connection : connections) {
        if (connection.mode == Mode::Hold) close(connection);
    }
}

bool TrafficServer::isWhole(const Connection& connection, std::string_view arrived) const {
    if (connection.mode == Mode::Lines) return arrived.ends_with(traffic::lineEnd);
    return traffic::isWhole(arrived, connection.turns->at(connection.turn));
}

void TrafficServer::take(Connection& connection, std::string_view whole) {
    if (connection.mode == Mode::Talk) {
        takeTurn(connection, whole);
    } else {
        takeLine(connection, whole);
    }
}

void TrafficServer::takeTurn(Connection& connection, std::string_view request) {
    facts.requestSize = request.copy(facts.request.data(), facts.request.size());
    const traffic::Turn& turn = connection.turns->at(connection.turn);
    connection.turn = (connection.turn + 1) % connection.turns->size();
    for (const std::string& piece : turn.fromServer)
        send(connection, piece);
}

void TrafficServer::takeLine(Connection& connection, std::string_view line) {
    if (line.starts_with(traffic::sink)) {
        connection.mode = Mode::Sink;
        connection.remaining = numberIn(line);
        send(connection, traffic::sinkReady);
    } else if (line.starts_with(traffic::source)) {
        startSource(connection, block, numberIn(line));
    } else if (line.starts_with(traffic::peerToPeerSource)) {
        startSource(connection, peerToPeer, numberIn(line));
    } else if (line.starts_with(traffic::talk)) {
        connection.mode = Mode::Talk;
        connection.turns = &traffic::turnsOf(static_cast<traffic::Talk>(numberIn(line)));
        connection.turn = 0;
        send(connection, line);
    } else if (line == traffic::hold) {
        connection.mode = Mode::Hold;
        waitFor(connection, 0);
        send(connection, line);
    } else if (line == traffic::release) {
        releaseHeld();
        send(connection, line);
    } else {
        send(connection, line);
    }
}

void TrafficServer::startSource(Connection& connection, const std::string& what,
                                std::int64_t count) {
    connection.mode = Mode::Source;
    connection.block = &what;
    connection.remaining = count;
    waitFor(connection, EPOLLIN | EPOLLOUT);
}

void TrafficServer::sendBlocks(Connection& connection) {
    const std::string_view whole = *connection.block;
    const auto size = static_cast<std::int64_t>(whole.size());
    while (connection.remaining > 0) {
        // What remains shows how far the current block has got.
        const std::int64_t rest = (connection.remaining - 1) % size + 1;
        const std::string_view part = whole.substr(static_cast<std::size_t>(size - rest));
        const auto sent = ::send(connection.socket.get(), part.data(), part.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno == EAGAIN) return;
        if (sent < 0) return close(connection);
        connection.remaining -= sent;
        facts.sourceBytes += sent;
    }
    connection.mode = Mode::Lines;
    waitFor(connection, EPOLLIN);
}

void TrafficServer::send(Connection& connection, std::string_view bytes) {
    // Answers are short, and no second one is asked for before the first has been read: what does
    // not fit at once means that the other side has broken the agreement.
    const auto sent = ::send(connection.socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent != static_cast<ssize_t>(bytes.size())) close(connection);
}

void TrafficServer::waitFor(Connection& connection, std::uint32_t events) {
    epoll_event event{};
    event.events = events;
    event.data.fd = connection.socket.get();
    epoll_ctl(epoll.get(), EPOLL_CTL_MOD, connection.socket.get(), &event);
}

#include "bench/relay/contenders/RunningRelay.h"

#include "bench/relay/server/traffic.h"
#include "bench/relay/system/BenchError.h"
#include "bench/relay/system/interruption.h"

#include <chrono>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto patience = 10s;
constexpr auto patienceForPort = 3s;
/// Short against any start; the waiting itself must leave the core to the one that starts.
constexpr auto betweenAttempts = 250us;

std::string takenText(Port port) {
    const std::string number = std::to_string(port);
    return "port " + number +
           " is taken, and the program under test has no other; end what listens there (`ss -ltnp "
           "'sport = :" +
           number + "'` shows it) and start again";
}

}  // namespace

RunningRelay::RunningRelay(const Contender& which, const ServerProcess& server,
                           const std::filesystem::path& folder)
    : contender(which), serverPort(server.port()), port(choosePort()) {
    if (contender.isRelay()) {
        const Launch launch = launchOf(contender, port, serverPort, folder);
        const auto began = Clock::now();
        process.emplace(launch);
        awaitFirstMessage();
        startTime = std::chrono::duration<double, std::milli>(Clock::now() - began).count();
    }
    // What the measurement before has left behind ends before the next one begins.
    server.waitUntilIdle();
}

Port RunningRelay::choosePort() const {
    if (!contender.isRelay()) return serverPort;
    if (!contender.fixedPort) return findFreePort();
    const Port fixed = *contender.fixedPort;
    const auto deadline = Clock::now() + patienceForPort;
    while (!isPortFree(fixed)) {
        if (Clock::now() > deadline) throw PortTaken(takenText(fixed));
        pauseFor(10ms);
    }
    return fixed;
}

void RunningRelay::awaitFirstMessage() {
    const auto deadline = Clock::now() + patience;
    for (;;) {
        const Descriptor socket = makeClientSocket();
        if (tryConnect(socket.get(), port)) {
            shakeHands(socket.get(), contender.handshake, serverPort);
            exchange(socket.get(), traffic::message());
            // Otherwise it was another program that took the port in the meantime and answered.
            if (process->isRunning()) return;
        }
        if (!process->isRunning()) throw BenchError(describeState());
        if (Clock::now() > deadline) throw BenchError("it did not listen within ten seconds");
        pauseFor(betweenAttempts);
    }
}

void RunningRelay::open(int socket) const {
    if (!tryConnect(socket, port)) throw BenchError("it does not listen any more");
    shakeHands(socket, contender.handshake, serverPort);
}

Descriptor RunningRelay::open() const {
    Descriptor socket = makeClientSocket();
    open(socket.get());
    return socket;
}

std::vector<Descriptor> RunningRelay::openMany(std::size_t count) const {
    std::vector<Descriptor> sockets(count);
    for (Descriptor& socket : sockets)
        socket = open();
    return sockets;
}

std::string RunningRelay::describeState() const {
    if (!process) return "there is no relay between";
    const std::string last = process->lastLine();
    return std::string(process->isRunning() ? "the relay is running" : "the relay has ended") +
           (last.empty() ? "" : "; its last words: " + last);
}

void exchange(int socket, std::string_view message) {
    sendAll(socket, message);
    std::string answer(message.size(), '\0');
    receiveExactly(socket, answer.data(), answer.size());
    if (answer != message) throw BenchError("a message came back changed");
}

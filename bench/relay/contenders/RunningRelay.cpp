#include "bench/relay/contenders/RunningRelay.h"

#include "bench/relay/server/traffic.h"
#include "bench/relay/system/BenchError.h"
#include "bench/relay/system/interruption.h"
#include "tests/support/Peer.h"
#include "tests/support/storedSettings.h"

#include <array>
#include <chrono>

namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;
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

std::string portBytes(Port port) {
    return {static_cast<char>(port >> 8), static_cast<char>(port & 0xff)};
}

const std::string loopbackBytes = "\x7f\0\0\x01"s;

void shakeHandsBySocks4(int socket, Port server) {
    sendAll(socket, "\x04\x01"s + portBytes(server) + loopbackBytes + "bench\0"s);
    std::array<char, 8> reply{};
    receiveExactly(socket, reply.data(), reply.size());
    // The standard has 0 as the first byte of the reply; the program under test answers 4.
    if ((reply[0] != 0 && reply[0] != 4) || reply[1] != 90) {
        throw BenchError("the relay refused the SOCKS 4 request");
    }
}

void shakeHandsBySocks5(int socket, Port server) {
    sendAll(socket, "\x05\x01\0"s);
    std::array<char, 2> method{};
    receiveExactly(socket, method.data(), method.size());
    if (method[0] != 5 || method[1] != 0) throw BenchError("the relay wants a SOCKS 5 password");

    sendAll(socket, "\x05\x01\0\x01"s + loopbackBytes + portBytes(server));
    std::array<char, 10> reply{};
    receiveExactly(socket, reply.data(), reply.size());
    if (reply[0] != 5 || reply[1] != 0) throw BenchError("the relay refused the SOCKS 5 request");
}

/// When the store of the program under test was changed; nothing for the others.
std::optional<std::filesystem::file_time_type> storeTime(const Contender& contender,
                                                         const std::filesystem::path& folder) {
    if (!contender.rewrites) return {};
    return std::filesystem::last_write_time(storeIn(settingsFolderIn(folder)));
}

/// Asks for `server` on loopback over a connected socket, and waits for the consent.
void shakeHands(int socket, Handshake handshake, Port server) {
    switch (handshake) {
        case Handshake::None: break;
        case Handshake::Socks4: shakeHandsBySocks4(socket, server); break;
        case Handshake::Socks5: shakeHandsBySocks5(socket, server); break;
    }
}

}  // namespace

RunningRelay::RunningRelay(const Contender& contender, const ServerProcess& server,
                           const std::filesystem::path& folder, const Settings& settings)
    : contender(contender), serverPort(server.port()), port(choosePort()) {
    if (contender.isRelay()) {
        const ProcessStart start = startOf(contender, port, serverPort, folder, settings);
        const auto stored = storeTime(contender, folder);
        const auto began = Clock::now();
        process.emplace(start, folder / (contender.name + ".log"));
        awaitFirstMessage();
        startTime = std::chrono::duration<double, std::milli>(Clock::now() - began).count();
        // It begins its log then. What has just been written is looked at more closely for 0.1 s.
        if (storeTime(contender, folder) != stored) std::this_thread::sleep_for(200ms);
    }
    // What the measurement before has left behind ends before the next one begins.
    server.waitUntilIdle();
}

Port RunningRelay::choosePort() const {
    if (!contender.isRelay()) return serverPort;
    if (!contender.fixedPort) return Server().port();
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
            echo(socket.get(), traffic::unknownCommand());
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
           (last.empty() ? "" : "; it wrote last: " + last);
}

void echo(int socket, std::string_view line) {
    sendAll(socket, line);
    std::string answer(line.size(), '\0');
    receiveExactly(socket, answer.data(), answer.size());
    if (answer != line) throw BenchError("a line came back changed");
}

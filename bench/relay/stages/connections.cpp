#include "bench/relay/server/traffic.h"
#include "bench/relay/stages/Stage.h"
#include "bench/relay/stages/Talker.h"
#include "bench/relay/system/BenchError.h"
#include "bench/relay/system/interruption.h"
#include "bench/relay/system/processFacts.h"

#include <chrono>
#include <string>

#include <fcntl.h>
#include <sys/socket.h>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr std::size_t warmUpOpenings = 20;

/// Opens `count` connections, adds the time of each to `times`, and closes them all.
void openSeries(const StageRun& run, std::size_t count, std::vector<double>& times) {
    const std::string message = traffic::unknownCommand();
    {
        std::vector<Descriptor> open;
        open.reserve(count);
        while (open.size() < count) {
            Descriptor socket = makeClientSocket();
            const auto start = Clock::now();
            run.relay.open(socket.get());
            echo(socket.get(), message);
            times.push_back(
                std::chrono::duration<double, std::micro>(Clock::now() - start).count());
            open.push_back(std::move(socket));
        }
    }
    run.server.waitUntilIdle();
}

constexpr double mebibyte = 1024 * 1024;
constexpr std::size_t connections = 1000;

/// Far more than a system's buffers hold for two connections: whoever takes it keeps it himself.
constexpr std::int64_t endlessly = std::int64_t{256} * 1024 * 1024;
/// A sender that moves nothing for so long has been made to wait.
constexpr auto standstill = 400ms;

/// Watches `progress` until it stands still, and returns it.
template <typename Progress>
std::int64_t awaitStandstill(Progress&& progress) {
    std::int64_t last = progress();
    auto lastChange = Clock::now();
    while (Clock::now() - lastChange < standstill) {
        pauseFor(5ms);
        const std::int64_t now = progress();
        if (now != last) lastChange = Clock::now();
        last = now;
    }
    return last;
}

void recordStall(const StageRun& run, std::int64_t taken, std::int64_t memoryBefore, Figure growth,
                 Figure amount) {
    if (taken >= endlessly) throw BenchError("it took 256 MiB without making the sender wait");
    const auto grown = ownMemoryBytes(run.relay.processId()) - memoryBefore;
    run.record(growth, static_cast<double>(grown) / mebibyte);
    run.record(amount, static_cast<double>(taken) / mebibyte);
}

}  // namespace

void measureOpenings(const StageRun& run, Figure figure, std::size_t count, std::size_t series) {
    std::vector<double> times;
    openSeries(run, warmUpOpenings, times);
    times.clear();
    for (std::size_t number = 0; number < series; ++number)
        openSeries(run, count, times);
    run.record(figure, percentile(times, 0.5));
}

void measureMemory(const StageRun& run) {
    const pid_t process = run.relay.processId();
    run.record(Figure::IdleMemory, static_cast<double>(memoryBytes(process)) / 1e6);
    const auto speak = [&](const Descriptor& socket) {
        (void)Talker(run, socket.get(), traffic::Talk::Text).takeTurn();
    };
    // What the first text needs once is not the connections'.
    const Descriptor first = run.relay.open();
    speak(first);
    const auto before = ownMemoryBytes(process);
    std::vector<Descriptor> open = run.relay.openMany(connections);
    for (const Descriptor& socket : open)
        speak(socket);
    const auto grown = ownMemoryBytes(process) - before;
    run.record(Figure::MemoryPerConnection, static_cast<double>(grown) / connections);
}

void measureStalledClient(const StageRun& run) {
    const auto before = ownMemoryBytes(run.relay.processId());
    const auto sentBefore = run.server.sourceBytes();
    const Descriptor socket = run.relay.open();
    sendAll(socket.get(), std::string(traffic::source) + std::to_string(endlessly) +
                              std::string(traffic::lineEnd));
    const auto taken = awaitStandstill([&] { return run.server.sourceBytes() - sentBefore; });
    if (taken == 0) throw BenchError("nothing was taken for a client that stalls");
    recordStall(run, taken, before, Figure::StallDownGrowth, Figure::StallDownTaken);
}

void measureStalledServer(const StageRun& run) {
    const auto before = ownMemoryBytes(run.relay.processId());
    const Descriptor socket = run.relay.open();
    echo(socket.get(), traffic::hold);
    fcntl(socket.get(), F_SETFL, O_NONBLOCK);

    const std::string block = traffic::block();
    std::int64_t sent = 0;
    const auto taken = awaitStandstill([&] {
        while (sent < endlessly) {
            const auto count = send(socket.get(), block.data(), block.size(), MSG_NOSIGNAL);
            if (count < 0 && errno == EAGAIN) break;
            if (count < 0) throwSystemError("sending to a server that stalls failed");
            sent += count;
        }
        return sent;
    });
    recordStall(run, taken, before, Figure::StallUpGrowth, Figure::StallUpTaken);
}

#include "bench/relay/server/traffic.h"
#include "bench/relay/stages/Stage.h"
#include "bench/relay/system/BenchError.h"
#include "bench/relay/system/processFacts.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace {

using Clock = std::chrono::steady_clock;

/// Far beyond any measured time; a relay that loses bytes is found out by it.
constexpr std::chrono::seconds longestTransfer{30};

std::string command(std::string_view word, std::int64_t count) {
    return std::string(word) + std::to_string(count) + std::string(traffic::lineEnd);
}

void failWhenLate(Clock::time_point start) {
    if (Clock::now() - start > longestTransfer)
        throw BenchError("the bytes did not all arrive in time");
}

void awaitAnswer(int socket, std::string_view expected) {
    std::string answer(expected.size(), '\0');
    receiveExactly(socket, answer.data(), answer.size());
    if (answer != expected) throw BenchError("the server's answer came back changed");
}

void takeFromServer(int socket, std::string_view source, std::int64_t count) {
    const auto start = Clock::now();
    sendAll(socket, command(source, count));
    std::string buffer(traffic::blockSize, '\0');
    while (count > 0) {
        count -= static_cast<std::int64_t>(receiveSome(socket, buffer.data(), buffer.size()));
        failWhenLate(start);
    }
    if (count < 0) throw BenchError("more bytes arrived than the server had sent");
}

void giveToServer(int socket, const std::string& block, std::int64_t count) {
    const auto start = Clock::now();
    sendAll(socket, command(traffic::sink, count));
    awaitAnswer(socket, traffic::sinkReady);
    for (; count > 0; count -= static_cast<std::int64_t>(block.size())) {
        sendAll(socket, block);
        failWhenLate(start);
    }
    awaitAnswer(socket, traffic::sinkDone);
}

/// Times `transfer`, which takes a socket and a number of bytes that is one of whole blocks.
template <typename Transfer>
void measureTransfer(const StageRun& run, std::size_t blockSize, Figure rate,
                     std::optional<Figure> processor, Transfer&& transfer) {
    const auto size = static_cast<std::int64_t>(blockSize);
    const Descriptor socket = run.relay.open();
    transfer(socket.get(), run.plan.bulkWarmUpBytes / size * size);

    const bool countsProcessor = processor && run.relay.hasProcess();
    const auto before = countsProcessor ? processorNanoseconds(run.relay.processId()) : 0;
    const auto start = Clock::now();
    const std::int64_t count = run.plan.bulkBytes / size * size;
    transfer(socket.get(), count);
    const std::chrono::duration<double> seconds = Clock::now() - start;

    const auto bytes = static_cast<double>(count);
    run.record(rate, bytes / 1e6 / seconds.count());
    if (countsProcessor) {
        const auto used = processorNanoseconds(run.relay.processId()) - before;
        run.record(*processor, static_cast<double>(used) / bytes);
    }
}

void measureDown(const StageRun& run, std::string_view source, std::size_t blockSize, Figure rate,
                 std::optional<Figure> processor) {
    measureTransfer(run, blockSize, rate, processor,
                    [&](int socket, std::int64_t count) { takeFromServer(socket, source, count); });
}

void measureUp(const StageRun& run, const std::string& block, Figure rate,
               std::optional<Figure> processor) {
    measureTransfer(run, block.size(), rate, processor,
                    [&](int socket, std::int64_t count) { giveToServer(socket, block, count); });
}

}  // namespace

void measureBulkDown(const StageRun& run) {
    measureDown(run, traffic::source, traffic::blockSize, Figure::BulkDown,
                Figure::BulkDownProcessor);
}

void measureBulkUp(const StageRun& run) {
    measureUp(run, traffic::block(), Figure::BulkUp, Figure::BulkUpProcessor);
}

void measurePeerToPeerDown(const StageRun& run) {
    measureDown(run, traffic::peerToPeerSource, traffic::peerToPeerSize, Figure::PeerToPeerDown,
                {});
}

void measurePeerToPeerUp(const StageRun& run) {
    measureUp(run, traffic::peerToPeerFromClient(), Figure::PeerToPeerUp, {});
}

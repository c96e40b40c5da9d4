#include "bench/relay/server/traffic.h"
#include "bench/relay/stages/measurements.h"
#include "bench/relay/system/BenchError.h"
#include "bench/relay/system/processFacts.h"

#include <algorithm>
#include <chrono>
#include <string>

namespace {

using Clock = std::chrono::steady_clock;

/// Far beyond any measured time; a relay that loses bytes is found out by it.
constexpr std::chrono::seconds patience{30};

std::string command(std::string_view word, std::int64_t count) {
    return std::string(word) + std::to_string(count) + std::string(traffic::messageEnd);
}

void failWhenLate(Clock::time_point start) {
    if (Clock::now() - start > patience) throw BenchError("the bytes did not all arrive in time");
}

void awaitAnswer(int socket, std::string_view expected) {
    std::string answer(expected.size(), '\0');
    receiveExactly(socket, answer.data(), answer.size());
    if (answer != expected) throw BenchError("the server's answer came back changed");
}

void takeFromServer(int socket, std::int64_t count) {
    const auto start = Clock::now();
    sendAll(socket, command(traffic::source, count));
    std::string buffer(traffic::blockSize, '\0');
    while (count > 0) {
        count -= static_cast<std::int64_t>(receiveSome(socket, buffer.data(), buffer.size()));
        failWhenLate(start);
    }
    if (count < 0) throw BenchError("more bytes arrived than the server had sent");
}

void giveToServer(int socket, std::int64_t count) {
    const auto start = Clock::now();
    sendAll(socket, command(traffic::sink, count));
    awaitAnswer(socket, traffic::sinkReady);
    const std::string block = traffic::block();
    for (; count > 0; count -= static_cast<std::int64_t>(block.size())) {
        sendAll(socket, block);
        failWhenLate(start);
    }
    awaitAnswer(socket, traffic::sinkDone);
}

using Transfer = void (*)(int socket, std::int64_t count);

void measureTransfer(const StageRun& run, Transfer transfer, Figure rate, Figure processor) {
    const Descriptor socket = run.relay.open();
    transfer(socket.get(), run.plan.bulkWarmUpBytes);

    const bool hasProcess = run.relay.hasProcess();
    const auto before = hasProcess ? processorNanoseconds(run.relay.processId()) : 0;
    const auto start = Clock::now();
    transfer(socket.get(), run.plan.bulkBytes);
    const std::chrono::duration<double> seconds = Clock::now() - start;

    const auto bytes = static_cast<double>(run.plan.bulkBytes);
    run.record(rate, bytes / 1e6 / seconds.count());
    if (hasProcess) {
        const auto used = processorNanoseconds(run.relay.processId()) - before;
        run.record(processor, static_cast<double>(used) / bytes);
    }
}

}  // namespace

void measureBulkDown(const StageRun& run) {
    measureTransfer(run, takeFromServer, Figure::BulkDown, Figure::BulkDownProcessor);
}

void measureBulkUp(const StageRun& run) {
    measureTransfer(run, giveToServer, Figure::BulkUp, Figure::BulkUpProcessor);
}

#include "bench/relay/report/statistics.h"
#include "bench/relay/server/traffic.h"
#include "bench/relay/stages/measurements.h"
#include "bench/relay/system/BenchError.h"
#include "bench/relay/system/processFacts.h"

#include <chrono>
#include <string>

namespace {

using Clock = std::chrono::steady_clock;

/// In the middle of the header line, so that neither part looks like anything else.
constexpr std::size_t splitPosition = 60;

double microsecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

void warmUp(int socket, std::string_view message, const Plan& plan) {
    const auto end = Clock::now() + plan.warmUpTime;
    while (Clock::now() < end)
        exchange(socket, message);
}

struct TripFigures {
    Figure median;
    Figure tail;
    std::optional<Figure> processor;
};

TripFigures figuresFor(std::size_t silent) {
    using enum Figure;
    if (silent == 0) return {TripMedian0, TripTail0, TripProcessor0};
    if (silent == 50) return {TripMedian50, TripTail50, {}};
    if (silent == 1000) return {TripMedian1000, TripTail1000, TripProcessor1000};
    throw BenchError("no figure for trips beside " + std::to_string(silent) + " connections");
}

}  // namespace

void measureTrips(const StageRun& run, std::size_t silent) {
    const TripFigures figures = figuresFor(silent);
    const auto others = run.relay.openMany(silent);
    const Descriptor socket = run.relay.open();
    const std::string message = traffic::message();
    warmUp(socket.get(), message, run.plan);

    const bool countsProcessor = figures.processor && run.relay.hasProcess();
    const auto before = countsProcessor ? processorNanoseconds(run.relay.processId()) : 0;
    std::vector<double> times(run.plan.trips);
    for (double& time : times) {
        const auto start = Clock::now();
        exchange(socket.get(), message);
        time = microsecondsSince(start);
    }
    if (countsProcessor) {
        const auto used = processorNanoseconds(run.relay.processId()) - before;
        run.record(*figures.processor,
                   static_cast<double>(used) / 1000 / static_cast<double>(times.size()));
    }
    run.record(figures.median, percentile(times, 0.5));
    run.record(figures.tail, percentile(times, 0.99));
}

void measureSplitTrips(const StageRun& run) {
    const Descriptor socket = run.relay.open();
    const std::string message = traffic::message();
    const std::string_view first = std::string_view(message).substr(0, splitPosition);
    warmUp(socket.get(), message, run.plan);

    std::string answer(message.size(), '\0');
    std::vector<double> times;
    const auto deadline = Clock::now() + run.plan.splitTime;
    while (times.size() < run.plan.splitTrips && (times.size() < 30 || Clock::now() < deadline)) {
        const auto start = Clock::now();
        sendAll(socket.get(), first);
        sendAll(socket.get(), std::string_view(message).substr(splitPosition));
        receiveExactly(socket.get(), answer.data(), answer.size());
        times.push_back(microsecondsSince(start));
        if (answer != message) throw BenchError("a message in two writes came back changed");
    }
    run.record(Figure::SplitMedian, percentile(times, 0.5));
    run.record(Figure::SplitTail, percentile(times, 0.99));
}

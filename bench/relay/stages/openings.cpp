#include "bench/relay/report/statistics.h"
#include "bench/relay/server/traffic.h"
#include "bench/relay/stages/measurements.h"

#include <chrono>
#include <string>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t warmUpOpenings = 20;

/// Opens `count` connections, adds the time of each to `times`, and closes them all.
void openSeries(const StageRun& run, std::size_t count, std::vector<double>& times) {
    const std::string message = traffic::message();
    {
        std::vector<Descriptor> open;
        open.reserve(count);
        while (open.size() < count) {
            Descriptor socket = makeClientSocket();
            const auto start = Clock::now();
            run.relay.open(socket.get());
            exchange(socket.get(), message);
            times.push_back(
                std::chrono::duration<double, std::micro>(Clock::now() - start).count());
            open.push_back(std::move(socket));
        }
    }
    run.server.waitUntilIdle();
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

#include "bench/desktop/RoundTrips.h"

#include "tests/support/Program.h"

#include <algorithm>

RoundTrips::RoundTrips() : relay(Relay::through(Program::port)), runner([this] { run(); }) {}

RoundTrips::~RoundTrips() {
    if (runner.joinable()) (void)finish();
}

void RoundTrips::run() {
    while (!ending) {
        const auto begin = std::chrono::steady_clock::now();
        (void)relay.up("PNG\r\n");
        times.emplace_back(std::chrono::steady_clock::now() - begin);
        // Leaves the other core to those who make trouble.
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
}

RoundTrips::Result RoundTrips::finish() {
    ending = true;
    runner.join();
    std::ranges::sort(times);
    return {times.at(times.size() / 2).count(), times.back().count()};
}

#pragma once

#include "tests/support/Relay.h"

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

/// A client that sends one short command after the other through the program, each when the last
/// one has arrived, from the moment that it is made.
class RoundTrips {
public:
    using Duration = std::chrono::duration<double, std::milli>;

    RoundTrips();
    ~RoundTrips();
    RoundTrips(const RoundTrips&) = delete;
    RoundTrips& operator=(const RoundTrips&) = delete;

    /// Ends the series. Both are in milliseconds.
    struct Result {
        double median;
        double longest;
    };
    [[nodiscard]] Result finish();

private:
    void run();

    Relay relay;
    std::vector<Duration> times;
    std::atomic<bool> ending = false;
    std::thread runner;
};

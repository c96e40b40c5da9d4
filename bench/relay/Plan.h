#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

/// How much is measured. The members hold the full run.
struct Plan {
    int repetitions = 7;
    /// No repetition begins that would probably end later than this.
    std::chrono::seconds timeLimit{540};

    /// What a relay still does for connections that were just opened falls into it.
    std::chrono::milliseconds warmUpTime{150};
    /// Enough to last longer than the period of any timer that a relay may have.
    std::size_t trips = 10000;
    /// A relay that delays these is not waited for longer than `splitTime`.
    std::size_t splitTrips = 1500;
    std::chrono::milliseconds splitTime{1500};

    std::int64_t bulkBytes = std::int64_t{4096} * 65536;
    std::int64_t bulkWarmUpBytes = std::int64_t{256} * 65536;

    /// A hundred openings are soon over, so this many series of them make one repetition.
    std::size_t shortSeries = 8;

    int stallRepetitions = 3;
    std::chrono::seconds idleTime{20};

    [[nodiscard]] static Plan quick() {
        Plan plan;
        plan.repetitions = 3;
        plan.timeLimit = std::chrono::seconds(100);
        plan.trips = 4000;
        plan.splitTrips = 400;
        plan.splitTime = std::chrono::milliseconds(500);
        plan.bulkBytes = std::int64_t{1024} * 65536;
        plan.bulkWarmUpBytes = std::int64_t{64} * 65536;
        plan.shortSeries = 3;
        plan.stallRepetitions = 1;
        plan.idleTime = std::chrono::seconds(8);
        return plan;
    }
};

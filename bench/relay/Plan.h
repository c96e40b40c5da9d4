#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

/// How much is measured. The members hold the full run.
struct Plan {
    int repetitions = 5;
    /// The stages with this in their name; all of them when it is empty.
    std::string only;
    /// No repetition begins that would probably end later than this.
    std::chrono::seconds timeLimit{540};

    /// In how many parts most figures are measured, all contenders in each of them.
    int rounds = 4;

    /// What a relay still does for connections that were just opened falls into it.
    std::chrono::milliseconds warmUpTime{150};
    std::size_t trips = 6000;
    /// A relay that takes longer for its trips makes fewer of them.
    std::chrono::milliseconds tripTime{1500};
    /// Each has seven turns.
    std::size_t signIns = 200;

    std::int64_t bulkBytes = std::int64_t{4096} * 65536;
    std::int64_t bulkWarmUpBytes = std::int64_t{256} * 65536;

    /// A hundred openings are soon over, so this many series of them make one round.
    std::size_t series = 2;

    int stallRepetitions = 3;
    std::chrono::seconds idleTime{20};

    /// Fewer samples, for a first look.
    [[nodiscard]] static Plan quick() {
        Plan plan;
        plan.repetitions = 3;
        plan.timeLimit = std::chrono::seconds(100);
        plan.trips = 2000;
        plan.tripTime = std::chrono::milliseconds(600);
        plan.signIns = 60;
        plan.bulkBytes = std::int64_t{1024} * 65536;
        plan.bulkWarmUpBytes = std::int64_t{64} * 65536;
        plan.series = 1;
        plan.stallRepetitions = 1;
        plan.idleTime = std::chrono::seconds(8);
        return plan;
    }

    /// What falls to one of so many rounds.
    [[nodiscard]] Plan ofRound(int count) const {
        Plan plan = *this;
        const auto parts = static_cast<std::size_t>(count);
        plan.trips /= parts;
        plan.tripTime /= count;
        plan.signIns /= parts;
        plan.bulkBytes /= count;
        plan.bulkWarmUpBytes /= count;
        return plan;
    }
};

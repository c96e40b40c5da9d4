#pragma once

#include "bench/relay/Plan.h"
#include "bench/relay/contenders/RunningRelay.h"
#include "bench/relay/report/Results.h"

#include <functional>
#include <string>
#include <vector>

/// What a stage measures with, and where its values go.
struct StageRun {
    const Plan& plan;
    const RunningRelay& relay;
    const ServerProcess& server;
    std::function<void(Figure, double)> record;
};

/// One kind of measurement, made with a fresh process of each contender in turn.
struct Stage {
    std::string name;
    /// All that it records, to be forgotten when it fails.
    std::vector<Figure> figures;
    std::function<void(const StageRun&)> measure;
    /// Contenders for which it makes no sense.
    std::function<bool(ContenderId)> leavesOut;
    /// In how many repetitions it runs.
    int repetitions;
};

/// In the order in which they run. `openLimit` is how many connections the descriptors at hand
/// allow for.
[[nodiscard]] std::vector<Stage> allStages(const Plan& plan, std::size_t openLimit);

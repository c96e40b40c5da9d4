#pragma once

#include "bench/relay/Plan.h"
#include "bench/relay/contenders/Contender.h"
#include "bench/relay/contenders/RunningRelay.h"
#include "bench/relay/report/Results.h"
#include "bench/relay/server/ServerProcess.h"
#include "bench/relay/stages/Stage.h"
#include "tests/support/TemporaryFolder.h"

#include <chrono>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// Takes all contenders through all stages, interleaved, and keeps what came out.
class Benchmark {
public:
    /// `openLimit` is how many connections the descriptors at hand allow for.
    Benchmark(const Plan& plan, std::vector<Contender> contenders, std::size_t openLimit);

    /// Throws `BenchError` when the program under test does not start at all.
    void run();

    /// What `run` found out.
    [[nodiscard]] const Results& results() const { return allResults; }
    /// As they were given, and what `run` learned about those that do not work here.
    [[nodiscard]] const std::vector<Contender>& contenders() const { return allContenders; }

private:
    using Clock = std::chrono::steady_clock;

    void warmUp();
    void runRepetition(int repetition);
    void runStage(std::size_t stageNumber, int repetition);
    [[nodiscard]] std::unique_ptr<RunningRelay> startFor(std::size_t stageNumber,
                                                         const Contender& contender,
                                                         int repetition);
    void measure(std::size_t stageNumber, const Contender& contender, const RunningRelay& relay,
                 int round);
    void giveUp(std::size_t stageNumber, const Contender& contender, const std::string& why);
    [[nodiscard]] bool isOut(std::size_t stageNumber, const Contender& contender) const;
    [[nodiscard]] bool hasTimeFor(Clock::duration repetition) const;

    Plan plan;
    std::vector<Contender> allContenders;
    std::vector<Stage> stages;
    ServerProcess server;
    TemporaryFolder folder;
    Results allResults;
    /// Not tried again: each failure may take as long as the longest wait.
    std::set<std::pair<std::size_t, ContenderId>> failed;
    Clock::time_point start;
};

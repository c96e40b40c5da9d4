#include "bench/relay/Benchmark.h"

#include "bench/relay/contenders/RunningRelay.h"
#include "bench/relay/system/BenchError.h"

#include <algorithm>
#include <iostream>
#include <string>

Benchmark::Benchmark(const Plan& plan, std::vector<Contender> contenders, std::size_t openLimit)
    : plan(plan),
      allContenders(std::move(contenders)),
      stages(allStages(plan, openLimit)),
      start(Clock::now()) {}

void Benchmark::run() {
    warmUp();
    Clock::duration longest{};
    for (int repetition = 0; repetition < plan.repetitions; ++repetition) {
        if (!hasTimeFor(longest)) {
            allResults.addNote("only " + std::to_string(repetition) + " of " +
                               std::to_string(plan.repetitions) +
                               " repetitions, for want of time; the machine was busy or is slow");
            break;
        }
        std::cerr << "repetition " << repetition + 1 << " of " << plan.repetitions << std::endl;
        const auto began = Clock::now();
        runRepetition(repetition);
        longest = std::max(longest, Clock::now() - began);
    }
    if (!plan.only.empty()) return;
    std::cerr << "idle relays" << std::endl;
    server.releaseHeld();
    measureIdleRelays(allContenders, plan, server, folder.path(), allResults);
}

/// Brings all programs into memory, and finds out who does not work at all here.
void Benchmark::warmUp() {
    for (Contender& contender : allContenders) {
        if (!contender.absence.empty()) continue;
        try {
            const RunningRelay relay(contender, server, folder.path(), usualSettings());
        } catch (const BenchError& error) {
            if (contender.id == ContenderId::Cobweave) {
                throw BenchError(contender.program->string() +
                                 " cannot be measured: " + error.what());
            }
            contender.absence = std::string("found, but it does not work here: ") + error.what();
        }
    }
}

void Benchmark::runRepetition(int repetition) {
    for (std::size_t stage = 0; stage < stages.size(); ++stage) {
        if (repetition >= stages[stage].repetitions) continue;
        if (stages[stage].name.find(plan.only) == std::string::npos) continue;
        // Another one begins each time, so that nobody always follows the same one.
        for (std::size_t turn = 0; turn < allContenders.size(); ++turn) {
            const auto offset = static_cast<std::size_t>(repetition) + stage;
            runStage(stage, allContenders[(turn + offset) % allContenders.size()], repetition);
        }
    }
}

void Benchmark::runStage(std::size_t stageNumber, const Contender& contender, int repetition) {
    const Stage& stage = stages[stageNumber];
    const auto key = std::pair(stageNumber, contender.id);
    if (!contender.absence.empty() || stage.leavesOut(contender.id) || failed.contains(key)) return;
    for (const Figure figure : stage.figures)
        allResults.announce(figure);

    std::string ending;
    try {
        server.releaseHeld();
        const RunningRelay relay(contender, server, folder.path(), stage.settings);
        if (relay.hasProcess()) {
            allResults.add({Figure::Start, contender.id}, repetition, relay.startMilliseconds());
        }
        try {
            stage.measure({plan, relay, server, [&](Figure figure, double value) {
                               allResults.add({figure, contender.id}, repetition, value);
                           }});
        } catch (const BenchError&) {
            ending = " (" + relay.describeState() + ")";
            throw;
        }
    } catch (const BenchError& error) {
        failed.insert(key);
        for (const Figure figure : stage.figures)
            allResults.discard({figure, contender.id});
        allResults.addNote(contender.name + ", " + stage.name + ": " + error.what() + ending);
    }
}

bool Benchmark::hasTimeFor(Clock::duration repetition) const {
    // Beside the idle time itself, its relays have to start and to settle.
    const auto idle = plan.idleTime + std::chrono::seconds(5);
    return Clock::now() - start + repetition + idle < plan.timeLimit;
}

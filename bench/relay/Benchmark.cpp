#include "bench/relay/Benchmark.h"

#include "bench/relay/system/BenchError.h"

#include <algorithm>
#include <iostream>
#include <string>
#include <string_view>

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
    constexpr std::string_view lastStage = "idle relays";
    if (lastStage.find(plan.only) == std::string_view::npos) return;
    std::cerr << lastStage << std::endl;
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
        runStage(stage, repetition);
    }
}

/// One after the other where there is one round, and else side by side, so that they meet the same
/// machine in each round.
void Benchmark::runStage(std::size_t stageNumber, int repetition) {
    const int rounds = stages[stageNumber].rounds;
    std::vector<std::pair<const Contender*, std::unique_ptr<RunningRelay>>> running;
    for (std::size_t turn = 0; turn < allContenders.size(); ++turn) {
        // Another one begins each time, so that nobody always follows the same one.
        const auto offset = static_cast<std::size_t>(repetition) + stageNumber;
        const Contender& contender = allContenders[(turn + offset) % allContenders.size()];
        auto relay = startFor(stageNumber, contender, repetition);
        if (!relay) continue;
        if (rounds == 1) {
            measure(stageNumber, contender, *relay, repetition);
        } else {
            running.emplace_back(&contender, std::move(relay));
        }
    }
    for (int round = 0; round < rounds; ++round) {
        for (const auto& [contender, relay] : running) {
            if (isOut(stageNumber, *contender)) continue;
            measure(stageNumber, *contender, *relay, repetition * rounds + round);
        }
    }
}

/// Nothing where it is not to be measured, or does not start.
std::unique_ptr<RunningRelay> Benchmark::startFor(std::size_t stageNumber,
                                                  const Contender& contender, int repetition) {
    const Stage& stage = stages[stageNumber];
    if (isOut(stageNumber, contender)) return nullptr;
    for (const Figure figure : stage.figures)
        allResults.announce(figure);
    try {
        server.releaseHeld();
        auto relay =
            std::make_unique<RunningRelay>(contender, server, folder.path(), stage.settings);
        if (relay->hasProcess()) {
            allResults.add({Figure::Start, contender.id}, repetition, relay->startMilliseconds());
        }
        return relay;
    } catch (const BenchError& error) {
        giveUp(stageNumber, contender, error.what());
        return nullptr;
    }
}

void Benchmark::measure(std::size_t stageNumber, const Contender& contender,
                        const RunningRelay& relay, int round) {
    const Stage& stage = stages[stageNumber];
    const Plan part = plan.ofRound(stage.rounds);
    try {
        server.waitUntilIdle();
        stage.measure({part, relay, server, [&](Figure figure, double value) {
                           allResults.add({figure, contender.id}, round, value);
                       }});
    } catch (const BenchError& error) {
        giveUp(stageNumber, contender, error.what() + (" (" + relay.describeState() + ")"));
    }
}

void Benchmark::giveUp(std::size_t stageNumber, const Contender& contender,
                       const std::string& why) {
    const Stage& stage = stages[stageNumber];
    failed.emplace(stageNumber, contender.id);
    for (const Figure figure : stage.figures)
        allResults.discard({figure, contender.id});
    allResults.addNote(contender.name + ", " + stage.name + ": " + why);
}

bool Benchmark::isOut(std::size_t stageNumber, const Contender& contender) const {
    return !contender.absence.empty() || stages[stageNumber].leavesOut(contender.id) ||
           failed.contains({stageNumber, contender.id});
}

bool Benchmark::hasTimeFor(Clock::duration repetition) const {
    // Beside the idle time itself, its relays have to start and to settle.
    const auto idle = plan.idleTime + std::chrono::seconds(5);
    return Clock::now() - start + repetition + idle < plan.timeLimit;
}

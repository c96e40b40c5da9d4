#include "bench/relay/stages/Stage.h"

#include "bench/relay/stages/Talker.h"
#include "stores/mdlEncode.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace {

using enum Figure;

/// It has a process for every few connections; this alone would take as long as all other stages.
bool wouldTakeTooLong(ContenderId contender) { return contender == ContenderId::Danted; }

bool needsProcess(ContenderId contender) { return contender == ContenderId::Direct; }

}  // namespace

Settings usualSettings() {
    const traffic::Turn& turn = traffic::turnsOf(traffic::Talk::Text).front();
    return {{{"lastthingusersaid", std::string(traffic::contact)},
             mdlEncode::Base64Encode(textOf(turn.fromServer.front()))},
            {{"Options", "windowrename"}, "0"},
            {{"Options", "windowrenamecaption"}, ""}};
}

std::vector<Stage> allStages(const Plan& plan, std::size_t openLimit) {
    const auto openings = [openLimit](Figure figure, std::size_t count, std::size_t series) {
        return [=](const StageRun& run) {
            measureOpenings(run, figure, std::min(count, openLimit), series);
        };
    };
    const int always = plan.repetitions;
    std::vector<Stage> stages = talkStages(plan);
    const int rounds = plan.rounds;
    for (Stage stage : std::initializer_list<Stage>{
             {"peer-to-peer down", {PeerToPeerDown}, measurePeerToPeerDown, always, rounds},
             {"peer-to-peer up", {PeerToPeerUp}, measurePeerToPeerUp, always, rounds},
             {"bulk down", {BulkDown, BulkDownProcessor}, measureBulkDown, always, rounds},
             {"bulk up", {BulkUp, BulkUpProcessor}, measureBulkUp, always, rounds},
             {"opening 100", {Open100}, openings(Open100, 100, plan.series), always, rounds},
             {"opening 1000", {Open1000}, openings(Open1000, 1000, 1), always, 2},
             {"opening 5000", {Open5000}, openings(Open5000, 5000, 1), always, 1, wouldTakeTooLong},
             {"memory", {IdleMemory, MemoryPerConnection}, measureMemory, always, 1, needsProcess},
             {"a client that stalls",
              {StallDownGrowth, StallDownTaken},
              measureStalledClient,
              plan.stallRepetitions,
              1,
              needsProcess},
             {"a server that stalls",
              {StallUpGrowth, StallUpTaken},
              measureStalledServer,
              plan.stallRepetitions,
              1,
              needsProcess},
         }) {
        stages.push_back(std::move(stage));
    }
    return stages;
}

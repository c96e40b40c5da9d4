#include "bench/relay/stages/Stage.h"

#include "bench/relay/stages/measurements.h"

#include <algorithm>

namespace {

using enum Figure;

bool leavesNobodyOut(ContenderId) { return false; }

/// It has a process for every few connections; this alone would take as long as all other stages.
bool wouldTakeTooLong(ContenderId contender) { return contender == ContenderId::Danted; }

bool needsProcess(ContenderId contender) { return contender == ContenderId::Direct; }

}  // namespace

std::vector<Stage> allStages(const Plan& plan, std::size_t openLimit) {
    const auto trips = [](std::size_t silent) {
        return [silent](const StageRun& run) { measureTrips(run, silent); };
    };
    const auto openings = [openLimit](Figure figure, std::size_t count, std::size_t series) {
        return [=](const StageRun& run) {
            measureOpenings(run, figure, std::min(count, openLimit), series);
        };
    };
    const int always = plan.repetitions;
    return {
        {"memory", {IdleMemory, MemoryPerConnection}, measureMemory, needsProcess, always},
        {"trips, K=0", {TripMedian0, TripTail0, TripProcessor0}, trips(0), leavesNobodyOut, always},
        {"trips, K=50", {TripMedian50, TripTail50}, trips(50), leavesNobodyOut, always},
        {"trips, K=1000",
         {TripMedian1000, TripTail1000, TripProcessor1000},
         trips(1000),
         leavesNobodyOut,
         always},
        {"messages in 2 writes",
         {SplitMedian, SplitTail},
         measureSplitTrips,
         leavesNobodyOut,
         always},
        {"bulk down", {BulkDown, BulkDownProcessor}, measureBulkDown, leavesNobodyOut, always},
        {"bulk up", {BulkUp, BulkUpProcessor}, measureBulkUp, leavesNobodyOut, always},
        {"opening 100",
         {Open100},
         openings(Open100, 100, plan.shortSeries),
         leavesNobodyOut,
         always},
        {"opening 1000", {Open1000}, openings(Open1000, 1000, 1), leavesNobodyOut, always},
        {"opening 5000", {Open5000}, openings(Open5000, 5000, 1), wouldTakeTooLong, always},
        {"a client that stalls",
         {StallDownGrowth, StallDownTaken},
         measureStalledClient,
         needsProcess,
         plan.stallRepetitions},
        {"a server that stalls",
         {StallUpGrowth, StallUpTaken},
         measureStalledServer,
         needsProcess,
         plan.stallRepetitions},
    };
}

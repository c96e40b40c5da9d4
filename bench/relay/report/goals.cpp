#include "bench/relay/report/goals.h"

#include "bench/relay/report/TextTable.h"
#include "bench/relay/report/statistics.h"

namespace {

using enum Figure;
using enum ContenderId;

/// The program lets 8 MiB a side wait. The rest is room for the chunk in hand and for what the
/// allocator keeps.
constexpr double stallLimit = 8.5;

Goal relative(Figure figure, Bound bound, double limit, ContenderId contender) {
    return {figure, bound, limit, Cell{figure, contender}, nameOf(contender)};
}

Goal atMost(Figure figure, double limit, ContenderId contender) {
    return relative(figure, Bound::AtMost, limit, contender);
}

Goal atLeast(Figure figure, double limit, ContenderId contender) {
    return relative(figure, Bound::AtLeast, limit, contender);
}

Goal atMostOfOwn(Figure figure, double limit, Figure other, const std::string& name) {
    return {figure, Bound::AtMost, limit, Cell{other, Cobweave}, "its own at " + name};
}

Goal absolutely(Figure figure, double limit) { return {figure, Bound::AtMost, limit, {}, {}}; }

bool isWithin(const Goal& goal, double value) {
    return goal.bound == Bound::AtMost ? value <= goal.limit : value >= goal.limit;
}

}  // namespace

std::vector<Goal> allGoals() {
    return {
        atMost(TripMedian0, 1.15, Floor),
        atMost(TripMedian50, 1.15, Floor),
        atMost(TripMedian1000, 1.20, Floor),
        atMost(TripMedian0, 1.05, MicroSocks),
        atMost(TripMedian50, 1.00, MicroSocks),
        atMost(TripMedian1000, 1.10, MicroSocks),
        atMostOfOwn(TripMedian1000, 1.25, TripMedian0, "K=0"),
        atMost(TripTail0, 1.5, Floor),
        atMost(TripTail1000, 1.5, Floor),
        atMost(SplitMedian, 1.3, Floor),
        absolutely(SplitTail, 1000),
        atMost(TripProcessor0, 1.30, Floor),
        atMost(TripProcessor1000, 1.30, Floor),
        atLeast(BulkDown, 0.85, Floor),
        atLeast(BulkUp, 0.85, Floor),
        atLeast(BulkDown, 1.0, Danted),
        atLeast(BulkUp, 1.0, Danted),
        atMost(BulkDownProcessor, 1.30, Floor),
        atMost(BulkUpProcessor, 1.30, Floor),
        atMost(BulkDownProcessor, 1.0, Danted),
        atMost(BulkUpProcessor, 1.0, Danted),
        atMost(Open100, 1.35, Floor),
        atMost(Open1000, 1.35, Floor),
        atMost(Open5000, 1.35, Floor),
        atMost(Open100, 1.0, MicroSocks),
        atMost(Open1000, 0.9, MicroSocks),
        atMost(Open5000, 0.9, MicroSocks),
        atMostOfOwn(Open5000, 1.3, Open100, "100"),
        absolutely(MemoryPerConnection, 2048),
        atMost(MemoryPerConnection, 0.6, HAProxy),
        absolutely(StallDownGrowth, stallLimit),
        absolutely(StallUpGrowth, stallLimit),
        absolutely(IdleWakeUps, 0.2),
        absolutely(IdleProcessor, 50),
        atMost(IdleMemory, 1.5, QEpoll),
        atMost(Start, 2.0, QEpoll),
    };
}

Outcome judge(const Goal& goal, const Results& results) {
    const Cell own{goal.figure, Cobweave};
    Outcome outcome{Verdict::NotMeasured, results.value(own), {}, {}};
    std::optional<double> judged = outcome.value;
    if (goal.reference) {
        outcome.referenceValue = results.value(*goal.reference);
        outcome.ratios = results.ratios(own, *goal.reference);
        judged.reset();
        if (!outcome.ratios.empty()) judged = median(outcome.ratios);
    }
    if (judged) {
        outcome.verdict = isWithin(goal, *judged) ? Verdict::Holds : Verdict::Missed;
    } else if (!outcome.value) {
        // It was there to be measured, so no value means that it failed.
        outcome.verdict = Verdict::Missed;
    }
    return outcome;
}

std::string describe(const Goal& goal) {
    std::string text = goal.bound == Bound::AtMost ? "at most " : "at least ";
    if (!goal.reference) {
        const FigureText figure = textOf(goal.figure);
        return text + numberText(goal.limit, goal.limit < 10 ? 1 : 0) + " " + figure.unit;
    }
    return text + numberText(goal.limit, 2) + " of " + goal.referenceName;
}

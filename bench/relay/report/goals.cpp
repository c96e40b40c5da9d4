#include "bench/relay/report/goals.h"

namespace {

using enum Figure;
using enum ContenderId;

/// The program lets a quarter of a mebibyte a side wait. The rest is room for the chunk in hand and
/// for what the allocator keeps.
constexpr double stallLimit = 1;

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
        // What users send.
        atMost(PingMedian, 1.15, Floor),
        atMost(TextMedian0, 1.35, Floor),
        atMost(TextMedian50, 1.35, Floor),
        atMost(TextMedian1000, 1.35, Floor),
        atMost(TextTail0, 1.6, Floor),
        atMost(TextProcessor0, 1.5, Floor),
        atMost(TextInTwoMedian, 1.25, Floor),
        atLeast(PeerToPeerDown, 0.90, Floor),
        atLeast(PeerToPeerUp, 0.90, Floor),

        // What no filter looks at.
        atMost(UnknownMedian0, 1.15, Floor),
        atMost(UnknownMedian50, 1.15, Floor),
        atMost(UnknownMedian1000, 1.20, Floor),
        atMost(UnknownMedian0, 1.05, MicroSocks),
        atMost(UnknownMedian50, 1.00, MicroSocks),
        atMost(UnknownMedian1000, 1.10, MicroSocks),
        atMostOfOwn(UnknownMedian1000, 1.25, UnknownMedian0, "K=0"),
        atMost(UnknownTail0, 1.5, Floor),
        atMost(UnknownTail1000, 1.5, Floor),
        atMost(UnknownInTwoMedian, 1.3, Floor),
        absolutely(UnknownInTwoTail, 1000),
        atMost(UnknownProcessor0, 1.30, Floor),
        atMost(UnknownProcessor1000, 1.30, Floor),
        atLeast(BulkDown, 0.90, Floor),
        atLeast(BulkUp, 0.90, Floor),
        atLeast(BulkDown, 1.0, Danted),
        atLeast(BulkUp, 1.0, Danted),
        atMost(BulkDownProcessor, 1.30, Floor),
        atMost(BulkUpProcessor, 1.30, Floor),
        atMost(BulkDownProcessor, 1.0, Danted),
        atMost(BulkUpProcessor, 1.0, Danted),

        // Connections.
        atMost(Open100, 1.35, Floor),
        atMost(Open1000, 1.15, Floor),
        atMost(Open5000, 1.35, Floor),
        atMost(Open100, 1.0, MicroSocks),
        atMost(Open1000, 0.9, MicroSocks),
        atMost(Open5000, 0.9, MicroSocks),
        atMostOfOwn(Open5000, 1.3, Open100, "100"),
        absolutely(MemoryPerConnection, 1024),
        atMost(MemoryPerConnection, 0.6, HAProxy),
        absolutely(StallDownGrowth, stallLimit),
        absolutely(StallUpGrowth, stallLimit),

        // The program as a whole.
        absolutely(IdleWakeUps, 0.2),
        absolutely(IdleProcessor, 50),
        atMost(IdleMemory, 1.5, QEpoll),
        atMost(Start, 1.5, QEpoll),
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

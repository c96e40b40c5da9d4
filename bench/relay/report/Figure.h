#pragma once

#include <string>

/// All that is measured, in the order of the table.
enum class Figure {
    PingMedian,
    TextMedian0,
    TextMedian50,
    TextMedian1000,
    TextTail0,
    TextProcessor0,
    TextInTwoMedian,
    TextInTwoTail,
    TokensMedian,
    ColoursMedian,
    StampMedian,
    FreshStoreMedian,
    LastWordsMedian,
    TypingMedian,
    SignInMedian,
    PeerToPeerDown,
    PeerToPeerUp,
    UnknownMedian0,
    UnknownMedian50,
    UnknownMedian1000,
    UnknownTail0,
    UnknownTail50,
    UnknownTail1000,
    UnknownInTwoMedian,
    UnknownInTwoTail,
    UnknownProcessor0,
    UnknownProcessor1000,
    BulkDown,
    BulkUp,
    BulkDownProcessor,
    BulkUpProcessor,
    Open100,
    Open1000,
    Open5000,
    MemoryPerConnection,
    IdleMemory,
    StallDownGrowth,
    StallDownTaken,
    StallUpGrowth,
    StallUpTaken,
    IdleWakeUps,
    IdleProcessor,
    Start,
};

/// How a figure is shown.
struct FigureText {
    const char* name;
    const char* unit;
    int decimals;
};

[[nodiscard]] FigureText textOf(Figure figure);

/// `value` with so many digits behind the point.
[[nodiscard]] std::string numberText(double value, int decimals);

/// How many there are, numbered from 0.
constexpr int figureCount = static_cast<int>(Figure::Start) + 1;

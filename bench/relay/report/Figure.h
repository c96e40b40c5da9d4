#pragma once

/// All that is measured, in the order of the table.
enum class Figure {
    TripMedian0,
    TripMedian50,
    TripMedian1000,
    TripTail0,
    TripTail50,
    TripTail1000,
    SplitMedian,
    SplitTail,
    TripProcessor0,
    TripProcessor1000,
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

struct FigureText {
    const char* name;
    const char* unit;
    int decimals;
};

[[nodiscard]] FigureText textOf(Figure figure);

constexpr int figureCount = static_cast<int>(Figure::Start) + 1;

#include "bench/relay/report/Figure.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>

namespace {

constexpr std::array<FigureText, figureCount> texts{{
    {"PNG/QNG round trip p50", "us", 1},
    {"text round trip p50, K=0", "us", 1},
    {"text round trip p50, K=50", "us", 1},
    {"text round trip p50, K=1000", "us", 1},
    {"text round trip p99, K=0", "us", 1},
    {"processor time a text trip, K=0", "us", 1},
    {"text in 2 writes p50", "us", 1},
    {"text in 2 writes p99", "us", 1},
    {"text with every token p50", "us", 1},
    {"text in random colours p50", "us", 1},
    {"text and stamped text p50", "us", 1},
    {"text, the store just written p50", "us", 1},
    {"text and new last words p50", "us", 1},
    {"typing notices p50", "us", 1},
    {"recorded sign-in p50", "us", 1},
    {"peer-to-peer down, 1.2 KB", "MB/s", 0},
    {"peer-to-peer up, 1.2 KB", "MB/s", 0},
    {"unknown command p50, K=0", "us", 1},
    {"unknown command p50, K=50", "us", 1},
    {"unknown command p50, K=1000", "us", 1},
    {"unknown command p99, K=0", "us", 1},
    {"unknown command p99, K=50", "us", 1},
    {"unknown command p99, K=1000", "us", 1},
    {"unknown command in 2 writes p50", "us", 1},
    {"unknown command in 2 writes p99", "us", 1},
    {"processor time a trip, K=0", "us", 1},
    {"processor time a trip, K=1000", "us", 1},
    {"bulk down, 64 KB writes", "MB/s", 0},
    {"bulk up, 64 KB writes", "MB/s", 0},
    {"processor time, bulk down", "s/GB", 2},
    {"processor time, bulk up", "s/GB", 2},
    {"opening + first answer p50, 100", "us", 1},
    {"opening + first answer p50, 1000", "us", 1},
    {"opening + first answer p50, 5000", "us", 1},
    {"memory per connection at 1000", "bytes", 0},
    {"idle memory", "MB", 2},
    {"client stalls: memory growth", "MiB", 2},
    {"client stalls: taken until stop", "MiB", 1},
    {"server stalls: memory growth", "MiB", 2},
    {"server stalls: taken until stop", "MiB", 1},
    {"idle wake-ups, 10 connections", "1/s", 2},
    {"idle processor, 10 connections", "us/s", 1},
    {"start to first served", "ms", 1},
}};

}  // namespace

FigureText textOf(Figure figure) { return texts.at(static_cast<std::size_t>(figure)); }

std::string numberText(double value, int decimals) {
    std::array<char, 64> text{};
    const int length = std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
    return {text.data(), static_cast<std::size_t>(std::clamp(length, 0, 63))};
}

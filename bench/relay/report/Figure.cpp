#include "bench/relay/report/Figure.h"

#include <array>
#include <cstddef>

namespace {

constexpr std::array<FigureText, figureCount> texts{{
    {"message round trip p50, K=0", "us", 1},
    {"message round trip p50, K=50", "us", 1},
    {"message round trip p50, K=1000", "us", 1},
    {"message round trip p99, K=0", "us", 1},
    {"message round trip p99, K=50", "us", 1},
    {"message round trip p99, K=1000", "us", 1},
    {"message in 2 writes p50", "us", 1},
    {"message in 2 writes p99", "us", 1},
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

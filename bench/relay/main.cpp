#include "bench/relay/Benchmark.h"
#include "bench/relay/report/report.h"
#include "bench/relay/system/BenchError.h"
#include "bench/relay/system/ChildProcess.h"
#include "bench/relay/system/interruption.h"
#include "bench/relay/system/machine.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <string_view>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr std::size_t mostConnections = 5000;
/// What nearly all figures need.
constexpr std::size_t fewestConnections = 1000;

struct Options {
    fs::path cobweave;
    Plan plan;
    bool isQuick = false;
    bool isPlain = false;
};

constexpr const char* usage =
    "usage: relay_bench --cobweave PATH [--quick] [--only STAGE] [--plain]";

Options readOptions(int count, char** arguments) {
    Options options;
    std::string only;
    for (int index = 1; index < count; ++index) {
        const std::string_view word = arguments[index];
        if (word == "--quick") {
            options.isQuick = true;
        } else if (word == "--plain") {
            options.isPlain = true;
        } else if (word == "--only" && index + 1 < count) {
            only = arguments[++index];
        } else if (word == "--cobweave" && index + 1 < count) {
            options.cobweave = fs::absolute(arguments[++index]);
        } else {
            throw BenchError(usage);
        }
    }
    if (options.isQuick) options.plan = Plan::quick();
    options.plan.only = only;
    if (options.cobweave.empty()) throw BenchError(usage);
    if (access(options.cobweave.c_str(), X_OK) != 0) {
        throw BenchError(options.cobweave.string() + " is no program; build it first");
    }
    return options;
}

/// A relay needs two descriptors a connection, and a few for itself.
std::size_t openLimitFor(std::size_t descriptors) {
    constexpr std::size_t reserve = 120;
    return descriptors > 2 * reserve ? (descriptors - reserve) / 2 : reserve / 2;
}

void printHead(const Options& options, int core, std::size_t descriptors) {
    std::cout << (options.isQuick ? "Relay benchmark, quick run\n\n" : "Relay benchmark\n\n")
              << machineDescription() << "pinned  load generator, relay and server to core " << core
              << "\nprogram " << options.cobweave.string() << "\n\n";
    const std::size_t limit = openLimitFor(descriptors);
    if (limit < mostConnections) {
        std::cout << "The limit of " << descriptors << " descriptors allows for " << limit
                  << " connections: \"5000\" below means " << limit
                  << ". Raise it with `ulimit -Hn 11000`.\n\n";
    }
    std::cout << std::flush;
}

void measureAndReport(const Options& options) {
    const std::size_t descriptors = raiseDescriptorLimit();
    if (openLimitFor(descriptors) < fewestConnections) {
        throw BenchError("the limit of " + std::to_string(descriptors) +
                         " descriptors is too low; raise it with `ulimit -Hn 11000`");
    }
    const int core = pinToOneCore();
    const fs::path ownFolder = fs::read_symlink("/proc/self/exe").parent_path();
    printHead(options, core, descriptors);

    Benchmark benchmark(options.plan, findContenders(ownFolder, options.cobweave, options.isPlain),
                        openLimitFor(descriptors));
    benchmark.run();

    printFigures(std::cout, benchmark.results(), benchmark.contenders());
    std::cout << "\nGoals\n\n";
    printGoals(std::cout, benchmark.results());
    printNotes(std::cout, benchmark.results(), benchmark.contenders());
}

}  // namespace

int main(int count, char** arguments) {
    watchForInterruption();
    adoptOrphans();
    try {
        measureAndReport(readOptions(count, arguments));
        return EXIT_SUCCESS;
    } catch (const Interrupted&) {
        std::cerr << "relay_bench: interrupted\n";
        return 130;
    } catch (const std::exception& error) {
        std::cerr << "relay_bench: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}

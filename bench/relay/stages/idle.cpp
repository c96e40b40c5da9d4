#include "bench/relay/server/traffic.h"
#include "bench/relay/stages/Stage.h"
#include "bench/relay/system/BenchError.h"
#include "bench/relay/system/interruption.h"
#include "bench/relay/system/processFacts.h"

#include <chrono>
#include <list>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr std::size_t idleConnections = 10;
/// What a program still does after its start and after the openings is not idleness.
constexpr auto settlingTime = 3s;

/// One resting relay. A failure of it is noted and ends its part alone.
struct IdleRelay {
    IdleRelay(const Contender& contender, const ServerProcess& server,
              const std::filesystem::path& folder)
        : id(contender.id), relay(contender, server, folder, usualSettings()) {}

    ContenderId id;
    RunningRelay relay;
    std::vector<Descriptor> open;
    Clock::time_point since;
    std::int64_t wakeUpsBefore = 0;
    std::int64_t nanosecondsBefore = 0;
    bool failed = false;
};

void openConnections(IdleRelay& idle) {
    idle.open = idle.relay.openMany(idleConnections);
    for (const Descriptor& socket : idle.open)
        echo(socket.get(), traffic::unknownCommand());
}

void beginCounting(IdleRelay& idle) {
    idle.since = Clock::now();
    idle.wakeUpsBefore = wakeUps(idle.relay.processId());
    idle.nanosecondsBefore = processorNanoseconds(idle.relay.processId());
}

void endCounting(IdleRelay& idle, Results& results) {
    const auto wokeUp = wakeUps(idle.relay.processId()) - idle.wakeUpsBefore;
    const auto used = processorNanoseconds(idle.relay.processId()) - idle.nanosecondsBefore;
    const std::chrono::duration<double> seconds = Clock::now() - idle.since;
    results.add({Figure::IdleWakeUps, idle.id}, 0, static_cast<double>(wokeUp) / seconds.count());
    results.add({Figure::IdleProcessor, idle.id}, 0,
                static_cast<double>(used) / 1000 / seconds.count());
}

template <typename Step>
void forEachHealthy(std::list<IdleRelay>& relays, Results& results, Step&& step) {
    for (IdleRelay& idle : relays) {
        if (idle.failed) continue;
        try {
            step(idle);
        } catch (const BenchError& error) {
            idle.failed = true;
            results.addNote(nameOf(idle.id) + ", idle: " + error.what());
        }
    }
}

}  // namespace

void measureIdleRelays(const std::vector<Contender>& contenders, const Plan& plan,
                       const ServerProcess& server, const std::filesystem::path& folder,
                       Results& results) {
    // All start before the first connection is kept, since a start ends with the server idle.
    std::list<IdleRelay> relays;
    for (const Contender& contender : contenders) {
        if (!contender.isRelay() || !contender.absence.empty()) continue;
        try {
            relays.emplace_back(contender, server, folder);
        } catch (const BenchError& error) {
            results.addNote(contender.name + ", idle: " + error.what());
        }
    }
    forEachHealthy(relays, results, openConnections);
    pauseFor(settlingTime);
    forEachHealthy(relays, results, beginCounting);
    pauseFor(plan.idleTime);
    forEachHealthy(relays, results, [&](IdleRelay& idle) { endCounting(idle, results); });
}

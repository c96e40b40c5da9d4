#pragma once

#include "bench/relay/Plan.h"
#include "bench/relay/contenders/RunningRelay.h"
#include "bench/relay/report/Results.h"
#include "stores/SettingsFile.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

/// What a stage measures with, and where its values go.
struct StageRun {
    const Plan& plan;
    const RunningRelay& relay;
    const ServerProcess& server;
    std::function<void(Figure, double)> record;
};

/// The store of somebody who has set nothing: with what a first start leaves there, and with the
/// text of the talks as the contact's last words, so that nothing of it has to be written.
[[nodiscard]] Settings usualSettings();

/// One kind of measurement, made with a fresh process of each contender in turn.
struct Stage {
    std::string name;
    /// All that it records, to be forgotten when it fails.
    std::vector<Figure> figures;
    /// Throws `BenchError` when the contender does not do what the figures stand for.
    std::function<void(const StageRun&)> measure;
    /// In how many repetitions it runs.
    int repetitions;
    /// In how many rounds all contenders are measured within a repetition. A machine that is slower
    /// for some seconds then is so for all of them.
    int rounds = 1;
    /// Contenders for which it makes no sense.
    std::function<bool(ContenderId)> leavesOut = [](ContenderId) { return false; };
    /// What the program under test finds in its store.
    Settings settings = usualSettings();
};

/// In the order in which they run. `openLimit` is how many connections the descriptors at hand
/// allow for.
[[nodiscard]] std::vector<Stage> allStages(const Plan& plan, std::size_t openLimit);

/// The stages in which client and server talk in turns (talks.cpp).
[[nodiscard]] std::vector<Stage> talkStages(const Plan& plan);

// What the other stages measure.

/// Blocks of 64 KB from the server to the client and the other way.
void measureBulkDown(const StageRun& run);
void measureBulkUp(const StageRun& run);

/// The same in peer-to-peer messages, each sent by itself.
void measurePeerToPeerDown(const StageRun& run);
void measurePeerToPeerUp(const StageRun& run);

/// Openings up to the first answer, `count` in a series, all kept open until its end.
void measureOpenings(const StageRun& run, Figure figure, std::size_t count, std::size_t series);

/// Memory when idle, and what each of a thousand connections adds.
void measureMemory(const StageRun& run);

/// What the relay takes, and how it grows, when the client or the server stops reading.
void measureStalledClient(const StageRun& run);
void measureStalledServer(const StageRun& run);

/// Lets all relays rest at the same time, each with ten open connections, and counts what they do
/// all the same. What goes wrong with one of them is a note in `results`.
void measureIdleRelays(const std::vector<Contender>& contenders, const Plan& plan,
                       const ServerProcess& server, const std::filesystem::path& folder,
                       Results& results);

#include "conversation/ConnectionRecord.h"
#include "conversation/ProcessValues.h"
#include "desktop/mdlFunctions.h"
#include "proxy/ProxyHost.h"
#include "proxy/clientFilter.h"
#include "proxy/hostForms.h"
#include "stores/SettingsStore.h"
#include "stores/mdlEncode.h"
#include "tests/support/FakeWinsock.h"
#include "tests/support/TemporaryFolder.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

/// A store whose file has not changed for long, as it is for nearly every chunk.
struct QuietStore {
    TemporaryFolder folder;
    std::filesystem::path path = folder.path() / "settings.db";
    SettingsStore settings{path, [](std::string_view) {}};

    void set(std::string_view key, std::string_view value) {
        settings.WriteSetting("Options", key, value);
        changeTime(-std::chrono::hours(1));
    }
    void changeTime(std::chrono::hours fromNow) const {
        const auto now = std::filesystem::file_time_type::clock::now();
        std::filesystem::last_write_time(path, now + fromNow);
    }
};

/// What a chunk passes through, without sockets.
struct Filters {
    QuietStore store;
    ProcessValues values;
    TrayForm tray;
    FakeNetwork network;
    FakeLoop loop;
    ProxyHost host{values, store.settings, tray, network, loop};
    ConnectionRecord connection;
};

std::string sized(std::string head, benchmark::State& state) {
    head.resize(static_cast<std::size_t>(state.range(0)), 'x');
    return head;
}

/// One chunk from the client; `head` decides which rule it meets.
void filterChunk(benchmark::State& state, const std::string& head) {
    Filters filters;
    filters.store.set("useristyping", "True");
    const std::string original = sized(head, state);
    std::string chunk;
    for (auto _ : state) {
        chunk = original;
        filterClientChunk(chunk, filters.connection, filters.host);
        benchmark::DoNotOptimize(chunk.data());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}

void plainRelay(benchmark::State& state) { filterChunk(state, "UUX 12 "); }
void oneWord(benchmark::State& state) { filterChunk(state, "UUX"); }
void typingNotice(benchmark::State& state) {
    filterChunk(state,
                "MSG 12 U 90\r\nMIME-Version: 1.0\r\nContent-Type: text/x-msmsgscontrol\r\n"
                "TypingUser: ann@example.com\r\n\r\n\r\n");
}
void copyOfAChunk(benchmark::State& state) {
    const std::string original = sized("", state);
    std::string chunk;
    for (auto _ : state) {
        chunk = original;
        benchmark::DoNotOptimize(chunk.data());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}

void coder(benchmark::State& state, std::string (*code)(std::string_view), std::string text) {
    text = sized(std::move(text), state);
    for (auto _ : state)
        benchmark::DoNotOptimize(code(text));
    state.SetBytesProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}

void base64Encode(benchmark::State& state) { coder(state, mdlEncode::Base64Encode, ""); }
void base64Decode(benchmark::State& state) { coder(state, mdlEncode::Base64Decode, ""); }
void urlEncode(benchmark::State& state) { coder(state, mdlFunctions::UrlEncode, ""); }
void urlDecode(benchmark::State& state) { coder(state, mdlFunctions::UrlDecode, "%41%20"); }

void readSetting(benchmark::State& state) {
    QuietStore store;
    store.set("progress", "1");
    for (auto _ : state) {
        benchmark::DoNotOptimize(store.settings.ReadSetting("Options", "progress"));
    }
}

/// Of a file that seems to change all the time, so that its version has to be asked for.
void readFreshSetting(benchmark::State& state) {
    QuietStore store;
    store.set("progress", "1");
    store.changeTime(std::chrono::hours(1));
    for (auto _ : state) {
        benchmark::DoNotOptimize(store.settings.ReadSetting("Options", "progress"));
    }
}

void writeSetting(benchmark::State& state) {
    QuietStore store;
    int number = 0;
    for (auto _ : state) {
        store.settings.WriteSetting("lastthingusersaid", "a", std::to_string(++number));
    }
}

constexpr int kilobyte = 1024;

BENCHMARK(copyOfAChunk)->Arg(kilobyte)->Arg(16 * kilobyte)->Arg(1024 * kilobyte)->Complexity();
BENCHMARK(plainRelay)->Arg(kilobyte)->Arg(16 * kilobyte)->Arg(1024 * kilobyte)->Complexity();
BENCHMARK(oneWord)->Arg(kilobyte)->Arg(16 * kilobyte)->Arg(1024 * kilobyte)->Complexity();
BENCHMARK(typingNotice)->Arg(kilobyte)->Arg(16 * kilobyte)->Arg(1024 * kilobyte)->Complexity();
BENCHMARK(base64Encode)->Arg(kilobyte)->Arg(16 * kilobyte)->Arg(1024 * kilobyte)->Complexity();
BENCHMARK(base64Decode)->Arg(kilobyte)->Arg(16 * kilobyte)->Arg(1024 * kilobyte)->Complexity();
BENCHMARK(urlEncode)->Arg(kilobyte)->Arg(16 * kilobyte)->Complexity();
BENCHMARK(urlDecode)->Arg(kilobyte)->Arg(16 * kilobyte)->Complexity();
BENCHMARK(readSetting);
BENCHMARK(readFreshSetting);
BENCHMARK(writeSetting);

}  // namespace

BENCHMARK_MAIN();

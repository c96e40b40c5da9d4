#include "bench/micro/QuietConversation.h"

#include "desktop/mdlFunctions.h"
#include "stores/mdlEncode.h"

#include <benchmark/benchmark.h>

#include <string>

/// The coders, and the store of settings.

namespace {

template <typename Code>
void coder(benchmark::State& state, Code code, std::string text) {
    text.resize(static_cast<std::size_t>(state.range(0)), 'x');
    for (auto _ : state)
        benchmark::DoNotOptimize(code(text));
    state.SetComplexityN(state.range(0));
}

void base64Encode(benchmark::State& state) { coder(state, mdlEncode::Base64Encode, ""); }
void base64Decode(benchmark::State& state) { coder(state, mdlEncode::Base64Decode, ""); }
void urlEncode(benchmark::State& state) { coder(state, mdlFunctions::UrlEncode, ""); }
void urlDecode(benchmark::State& state) { coder(state, mdlFunctions::UrlDecode, "%41%20"); }

void readSetting(benchmark::State& state) {
    QuietConversation conversation;
    for (auto _ : state) {
        benchmark::DoNotOptimize(conversation.services.settings.ReadSetting("Options", "callby"));
    }
}

/// Each write is on the disk before the next begins.
void writeSetting(benchmark::State& state) {
    QuietConversation conversation;
    int number = 0;
    for (auto _ : state) {
        conversation.services.settings.WriteSetting("lastthingusersaid", "a",
                                                    std::to_string(++number));
    }
}

BENCHMARK(base64Encode)->Arg(1024)->Arg(1024 * 1024)->Complexity(benchmark::oN);
BENCHMARK(base64Decode)->Arg(1024)->Arg(1024 * 1024)->Complexity(benchmark::oN);
BENCHMARK(urlEncode)->Arg(1024)->Arg(16 * 1024)->Complexity(benchmark::oN);
BENCHMARK(urlDecode)->Arg(1024)->Arg(16 * 1024)->Complexity(benchmark::oN);
BENCHMARK(readSetting);
BENCHMARK(writeSetting);

}  // namespace

BENCHMARK_MAIN();

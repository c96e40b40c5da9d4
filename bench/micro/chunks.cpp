#include "bench/micro/QuietConversation.h"

#include "conversation/messageConstants.h"
#include "proxy/filters.h"
#include "tests/support/messages.h"

#include <benchmark/benchmark.h>

#include <string>
#include <string_view>

/// What one chunk costs on its way through the filters, by its size. "copy" is what a mere copy of
/// it costs: any rewriting makes at least one.

namespace {

/// `filter` may keep what it makes of the chunk in the string that it is given as well.
void measureChunk(benchmark::State& state, const std::string& chunk, auto filter) {
    std::string rewritten;
    for (auto _ : state)
        benchmark::DoNotOptimize(filter(chunk, rewritten));
    state.SetComplexityN(state.range(0));
}

/// `chunk` with what fills it up to its size.
void measure(benchmark::State& state, std::string chunk, auto filter) {
    chunk.resize(static_cast<std::size_t>(state.range(0)), 'x');
    measureChunk(state, chunk, filter);
}

/// A text that makes its message as large as the chunk is to be.
std::string filling(const benchmark::State& state, std::string text) {
    constexpr std::size_t others = 150;
    text.resize(static_cast<std::size_t>(state.range(0)) - others, 'x');
    return text;
}

void measureFromClient(benchmark::State& state, const std::string& head) {
    QuietConversation conversation;
    measure(state, head, [&](std::string_view chunk, std::string& rewritten) {
        return filterClientChunk(chunk, rewritten, conversation);
    });
}

void measureFromServer(benchmark::State& state, const std::string& head) {
    QuietConversation conversation;
    measure(state, head, [&](std::string_view chunk, std::string& rewritten) {
        return filterServerChunk(chunk, rewritten, conversation);
    });
}

void copy(benchmark::State& state) {
    measure(state, "", [](std::string_view chunk, std::string& copied) {
        copied = chunk;
        return copied.data();
    });
}

void plainFromClient(benchmark::State& state) { measureFromClient(state, "UUX 12 "); }
void plainFromServer(benchmark::State& state) { measureFromServer(state, "NLN IDL "); }

/// The longest of what fails in a filter: no second word.
void oneWordFromClient(benchmark::State& state) { measureFromClient(state, "UUX"); }

/// Up to 1640 bytes its constants are expanded.
void textFromClient(benchmark::State& state) {
    QuietConversation conversation;
    measureChunk(state, clientText(filling(state, "It is <t>, <cn>")),
                 [&](std::string_view chunk, std::string& rewritten) {
                     return filterClientChunk(chunk, rewritten, conversation);
                 });
}

/// Every token looked for in the whole chunk; what is longer than 32,767 characters fails.
void constants(benchmark::State& state) {
    QuietConversation conversation;
    measure(state, "MSG 12 N 900\r\n" + textPayload("It is <t>, <cn>"),
            [&](std::string_view chunk, std::string& expanded) {
                expanded = chunk;
                return messageConstants::ExpandConstants(expanded, conversation);
            });
}

/// Remembered already and, up to 32,767 bytes, stamped.
void textFromServer(benchmark::State& state) {
    QuietConversation conversation;
    conversation.set("timestamp", "True");
    measureChunk(state, contactText(filling(state, "Hello")),
                 [&](std::string_view chunk, std::string& rewritten) {
                     return filterServerChunk(chunk, rewritten, conversation);
                 });
}

/// Each text differs from the last one, so that it has to be kept.
void newTextFromServer(benchmark::State& state) {
    QuietConversation conversation;
    int number = 0;
    std::string rewritten;
    for (auto _ : state) {
        const std::string chunk = contactText(std::to_string(++number));
        benchmark::DoNotOptimize(filterServerChunk(chunk, rewritten, conversation));
    }
}

constexpr int kilobyte = 1024;

void sizes(benchmark::internal::Benchmark* bench) {
    bench->Arg(kilobyte)->Arg(16 * kilobyte)->Arg(1024 * kilobyte)->Complexity(benchmark::oN);
}

BENCHMARK(copy)->Apply(sizes);
BENCHMARK(plainFromClient)->Apply(sizes);
BENCHMARK(plainFromServer)->Apply(sizes);
BENCHMARK(oneWordFromClient)->Apply(sizes);
BENCHMARK(textFromClient)->Apply(sizes);
BENCHMARK(constants)->Arg(kilobyte)->Arg(16 * kilobyte)->Complexity(benchmark::oN);
BENCHMARK(textFromServer)->Apply(sizes);
BENCHMARK(newTextFromServer);

}  // namespace

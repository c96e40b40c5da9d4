#include "bench/relay/stages/Talker.h"

#include "bench/relay/system/BenchError.h"

#include <charconv>
#include <chrono>
#include <utility>

namespace {

std::size_t countCommands(std::string_view bytes) {
    std::size_t count = 0;
    for (; !bytes.empty(); ++count)
        bytes.remove_prefix(commandSize(bytes));
    return count;
}

}  // namespace

void arrivesUnchanged(const traffic::Turn& turn, const Delivered& delivered) {
    if (delivered.atServer != traffic::joined(turn.fromClient)) {
        throw BenchError("what the client said reached the server changed");
    }
    if (delivered.atClient != traffic::joined(turn.fromServer)) {
        throw BenchError("what the server said reached the client changed");
    }
}

Talker::Talker(const StageRun& run, int socket, traffic::Talk talk, Check check)
    : run(run),
      socket(socket),
      turns(traffic::turnsOf(talk)),
      check(std::move(check)),
      buffer(traffic::blockSize, '\0') {
    for (const traffic::Turn& turn : turns)
        answers.push_back(countCommands(traffic::joined(turn.fromServer)));
    echo(socket, traffic::beginningOf(talk));
}

double Talker::takeTurn() {
    using Clock = std::chrono::steady_clock;
    const traffic::Turn& turn = turns[next];
    const auto start = Clock::now();
    for (const std::string& piece : turn.fromClient)
        sendAll(socket, piece);
    const std::string_view answer = receiveCommands(socket, answers[next], buffer);
    const std::chrono::duration<double, std::micro> time = Clock::now() - start;
    next = (next + 1) % turns.size();
    check(turn, {run.server.lastRequest(), answer});
    return time.count();
}

std::size_t commandSize(std::string_view bytes) {
    const std::size_t end = bytes.find(traffic::lineEnd);
    if (end == std::string_view::npos) return 0;
    const std::size_t line = end + traffic::lineEnd.size();
    if (!bytes.starts_with("MSG ")) return line;
    std::size_t payload = 0;
    const std::size_t number = bytes.rfind(' ', end) + 1;
    std::from_chars(bytes.data() + number, bytes.data() + end, payload);
    return bytes.size() < line + payload ? 0 : line + payload;
}

std::string_view behind(std::string_view mark, std::string_view text) {
    const std::size_t found = text.find(mark);
    return found == std::string_view::npos ? "" : text.substr(found + mark.size());
}

std::string textOf(std::string_view message) { return std::string(behind("\r\n\r\n", message)); }

std::string_view receiveCommands(int socket, std::size_t count, std::string& buffer) {
    std::size_t arrived = 0;
    std::size_t whole = 0;
    while (count > 0) {
        arrived += receiveSome(socket, buffer.data() + arrived, buffer.size() - arrived);
        const std::string_view bytes(buffer.data(), arrived);
        for (std::size_t size = commandSize(bytes.substr(whole)); size > 0 && count > 0; --count) {
            whole += size;
            size = commandSize(bytes.substr(whole));
        }
    }
    return {buffer.data(), arrived};
}

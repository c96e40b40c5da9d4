#pragma once

#include "bench/relay/server/traffic.h"
#include "bench/relay/stages/Stage.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

/// What came out of the relay in one turn.
struct Delivered {
    std::string_view atServer;
    std::string_view atClient;
};

/// Throws `BenchError` when a turn did not arrive as it is to.
using Check = std::function<void(const traffic::Turn&, const Delivered&)>;

/// The check for a relay that delivers what it gets.
void arrivesUnchanged(const traffic::Turn& turn, const Delivered& delivered);

/// The client's part of a talk, over a connection that nothing else uses meanwhile.
class Talker {
public:
    /// Begins the talk. `run` and `socket` outlive this object. Throws `BenchError` like all that
    /// receives.
    Talker(const StageRun& run, int socket, traffic::Talk talk, Check check = arrivesUnchanged);

    /// Sends the next turn and receives its answer. Returns the microseconds from the first byte
    /// sent to the last one received; what follows, the check, is not counted.
    double takeTurn();

    /// How many turns the talk has before it begins again.
    [[nodiscard]] std::size_t length() const { return turns.size(); }
    /// The turn that was taken last.
    [[nodiscard]] const traffic::Turn& last() const {
        return turns[(next + turns.size() - 1) % turns.size()];
    }

private:
    const StageRun& run;
    int socket;
    const std::vector<traffic::Turn>& turns;
    /// How many commands the server says in each turn.
    std::vector<std::size_t> answers;
    Check check;
    std::size_t next = 0;
    std::string buffer;
};

/// The size of the command that `bytes` begin with, with its payload; 0 while it is not whole.
[[nodiscard]] std::size_t commandSize(std::string_view bytes);

/// What stands behind the first `mark`; nothing where there is none.
[[nodiscard]] std::string_view behind(std::string_view mark, std::string_view text);

/// What stands behind the headers of a message.
[[nodiscard]] std::string textOf(std::string_view message);

/// Waits for `count` commands, as they are framed by line ends and declared lengths, and returns
/// what has arrived. `buffer` is where it goes, and has room for it.
[[nodiscard]] std::string_view receiveCommands(int socket, std::size_t count, std::string& buffer);

#include "bench/relay/stages/checks.h"

#include "bench/relay/system/BenchError.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace {

void demand(bool holds, const char* what) {
    if (!holds) throw BenchError(what);
}

std::string replaced(std::string text, std::string_view old, std::string_view fresh) {
    const std::size_t found = text.find(old);
    demand(found != std::string::npos, "the benchmark's own message lacks what is to be replaced");
    return text.replace(found, old.size(), fresh);
}

std::string_view payloadOf(std::string_view message) { return behind(traffic::lineEnd, message); }

/// The message with another payload, and its true length.
std::string withOtherPayload(const std::string& message, const std::string& payload) {
    const std::string head = message.substr(0, message.size() - payloadOf(message).size());
    return replaced(head, " " + std::to_string(payloadOf(message).size()) + "\r\n",
                    " " + std::to_string(payload.size()) + "\r\n") +
           payload;
}

}  // namespace

void hasLengthOfFirstPart(const traffic::Turn& turn, const Delivered& delivered) {
    const std::string whole = traffic::joined(turn.fromClient);
    const std::string first(payloadOf(turn.fromClient.front()));
    const std::string rest = turn.fromClient.back();
    demand(
        delivered.atServer == whole || delivered.atServer == withOtherPayload(whole, first) + rest,
        "the filters did not see the first part of a text");
    arrivesUnchanged({{std::string(delivered.atServer)}, turn.fromServer}, delivered);
}

void hasNoToken(const traffic::Turn& turn, const Delivered& delivered) {
    for (const char* const token :
         {"<t>", "<d>", "<ws>", "<mn>", "<me>", "<cn>", "<ce>", "<tr>", "<ur>", "<ru>", "<ut>"}) {
        demand(delivered.atServer.find(token) == std::string_view::npos, "a token was left");
    }
    const std::string text = textOf(delivered.atServer);
    demand(text.find(" " + std::string(traffic::client) + " Bob " + std::string(traffic::contact) +
                     " ") != std::string::npos,
           "the tokens of both addresses were not expanded");
    demand(commandSize(delivered.atServer) == delivered.atServer.size(),
           "a text with expanded tokens has not its true length");
    arrivesUnchanged({{std::string(delivered.atServer)}, turn.fromServer}, delivered);
}

Check hasNewColour() {
    return [last = std::string("0")](const traffic::Turn& turn,
                                     const Delivered& delivered) mutable {
        const std::string_view field = behind("CO=", delivered.atServer);
        const std::string color(field.substr(0, field.find(';')));
        demand(std::exchange(last, color) != color, "the colour of a text did not change");
        const std::string sent = turn.fromClient.front();
        const std::string payload = replaced(std::string(payloadOf(sent)), "CO=0", "CO=" + color);
        arrivesUnchanged({{withOtherPayload(sent, payload)}, turn.fromServer}, delivered);
    };
}

void hasStamp(const traffic::Turn& turn, const Delivered& delivered) {
    const std::string sent = turn.fromServer.front();
    const std::string_view payload = payloadOf(delivered.atClient);
    const std::string_view stamp = payload.substr(std::min(payload.size(), payloadOf(sent).size()));
    demand(stamp.starts_with(" [") && stamp.ends_with(']') && stamp.size() > 5,
           "a contact's text came without its stamp");
    const std::string stamped = std::string(payloadOf(sent)).append(stamp);
    arrivesUnchanged({turn.fromClient, {withOtherPayload(sent, stamped)}}, delivered);
}

void hidesTyping(const traffic::Turn& turn, const Delivered& delivered) {
    arrivesUnchanged(
        {{replaced(turn.fromClient.front(), "TypingUser:", "TypingUserx")}, turn.fromServer},
        delivered);
}

void signsInAsBusy(const traffic::Turn& turn, const Delivered& delivered) {
    traffic::Turn expected = turn;
    std::string& said = expected.fromClient.front();
    if (said.starts_with("CHG ")) said = replaced(said, " NLN ", " BSY ");
    arrivesUnchanged(expected, delivered);
}

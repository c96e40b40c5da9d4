#include "bench/relay/server/traffic.h"

#include "tests/support/Recording.h"
#include "tests/support/messages.h"

#include <algorithm>
#include <map>

namespace {

using namespace traffic;

/// Ends each text: what a relay puts behind a text comes behind this.
constexpr std::string_view lastWords = " (over)";
/// How many of the last bytes of a turn are compared.
constexpr std::size_t endSize = 6;

std::string unknownCommandOf(std::size_t size) {
    std::string line = "ILN 5 NLN someone@example.com Some%20Name 0 ";
    line.resize(size - lineEnd.size(), 'x');
    line += lineEnd;
    return line;
}

/// `begin` and words behind it, so many that `message` makes `size` bytes of the text.
template <typename Message>
std::string filled(std::size_t size, std::string_view begin, Message&& message) {
    constexpr std::string_view words = "shall we meet at eight, or is nine better for you? ";
    std::string text(begin);
    // Digits enough for the length of the payload, which is not there yet.
    const std::size_t others = message(std::string(100, 'x')).size() - 100 + lastWords.size();
    while (text.size() + others < size)
        text += words;
    text.resize(size - others);
    text += lastWords;
    return message(text);
}

std::string textOfClient(std::string_view begin) {
    return filled(messageSize, begin, [](const std::string& text) { return clientText(text); });
}

std::string textOfContact(std::string_view begin) {
    return filled(answerSize, begin,
                  [](const std::string& text) { return contactText(text, std::string(contact)); });
}

std::string withPayload(const std::string& head, const std::string& payload) {
    return head + std::to_string(payload.size()) + std::string(lineEnd) + payload;
}

std::string typingNotice(const std::string& head, std::string_view who) {
    return withPayload(head,
                       "MIME-Version: 1.0\r\n"
                       "Content-Type: text/x-msmsgscontrol\r\n"
                       "TypingUser: " +
                           std::string(who) + "\r\n\r\n\r\n");
}

std::string peerToPeer(const std::string& head, std::string_view to) {
    std::string payload =
        "MIME-Version: 1.0\r\n"
        "Content-Type: application/x-msnmsgrp2p\r\n"
        "P2P-Dest: " +
        std::string(to) + "\r\n\r\n";
    // Four digits for the length of the payload, and the line end. No byte of it is one that a
    // reader which begins in the middle could take for the head of something else.
    payload.resize(peerToPeerSize - head.size() - 4 - lineEnd.size(), 'x');
    return withPayload(head, payload);
}

std::vector<Turn> inTwoWrites(const std::string& request, const std::string& answer) {
    const std::size_t middle = request.size() - 30;
    return {{{request.substr(0, middle), request.substr(middle)}, {answer}}};
}

/// One turn for each time that the server answers what the client has said.
std::vector<Turn> recorded(const std::string& name) {
    std::vector<Turn> turns;
    for (const RecordedRead& read : readRecording(name)) {
        if (read.fromClient) {
            if (turns.empty() || !turns.back().fromServer.empty()) turns.emplace_back();
            turns.back().fromClient.push_back(read.bytes);
        } else {
            turns.back().fromServer.push_back(read.bytes);
        }
    }
    return turns;
}

std::map<Talk, std::vector<Turn>> allTalks() {
    const std::string text = textOfClient("");
    const std::string answer = textOfContact("");
    const std::string tokens = textOfClient(
        "<t> <d> <ws> <mn> <me> <cn> <ce> <tr> <ur> <ru> <ut> are all that can be expanded; ");
    return {
        {Talk::UnknownCommand, {{{unknownCommand()}, {unknownCommand()}}}},
        {Talk::UnknownCommandInTwo, inTwoWrites(unknownCommand(), unknownCommand())},
        {Talk::Ping, {{{"PNG\r\n"}, {"QNG 50\r\n"}}}},
        {Talk::Text, {{{text}, {answer}}}},
        {Talk::TextInTwo, inTwoWrites(text, answer)},
        {Talk::TextWithTokens, {{{tokens}, {answer}}}},
        {Talk::NewTexts,
         {{{text}, {textOfContact("on the one hand, ")}},
          {{text}, {textOfContact("and on the other, ")}}}},
        {Talk::Typing,
         {{{typingNotice("MSG 13 N ", client)},
           {typingNotice("MSG " + std::string(contact) + " Bob ", contact)}}}},
        // In this one the client says nothing twice in a row, so that no relay can join it.
        {Talk::SignIn, recorded("p10-talk-bob-ns-1.txt")},
    };
}

}  // namespace

const std::vector<Turn>& traffic::turnsOf(Talk which) {
    static const std::map<Talk, std::vector<Turn>> talks = allTalks();
    return talks.at(which);
}

std::string traffic::beginningOf(Talk which) {
    return std::string(talk) + std::to_string(static_cast<int>(which)) + std::string(lineEnd);
}

bool traffic::isWhole(std::string_view request, const Turn& turn) {
    const std::string_view last = turn.fromClient.back();
    return request.ends_with(last.substr(last.size() - std::min(last.size(), endSize)));
}

std::string traffic::joined(const std::vector<std::string>& pieces) {
    std::string all;
    for (const std::string& piece : pieces)
        all += piece;
    return all;
}

std::string traffic::unknownCommand() { return unknownCommandOf(messageSize); }

std::string traffic::block() { return unknownCommandOf(blockSize); }

std::string traffic::peerToPeerFromClient() { return peerToPeer("MSG 14 D ", contact); }

std::string traffic::peerToPeerFromServer() {
    return peerToPeer("MSG " + std::string(contact) + " Bob ", client);
}

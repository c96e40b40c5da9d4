#include "base/text.h"
#include "conversation/messageTools.h"
#include "tests/support/Recording.h"
#include "tests/support/Relay.h"
#include "tests/support/linux/Program.h"

#include <gtest/gtest.h>

namespace {

/// Feeds a recording to the running program and returns what came out at the other ends, one entry
/// for each read.
std::vector<RecordedRead> replay(const std::vector<RecordedRead>& reads) {
    Relay relay = Relay::through(Program::port);
    std::vector<RecordedRead> received;
    for (const RecordedRead& read : reads) {
        received.push_back(
            {read.fromClient, read.fromClient ? relay.up(read.bytes) : relay.down(read.bytes)});
    }
    return received;
}

class Replay : public testing::TestWithParam<std::string> {};

/// The chunk as the program sends it on with default settings: a chat command is covered, a token
/// becomes what it stands for.
std::string treated(const RecordedRead& read, const std::string& email) {
    if (!read.fromClient || !read.bytes.starts_with("MSG")) return read.bytes;
    std::string chunk = read.bytes;
    if (chunk.find("\r\n\r\n!nick ") != std::string::npos) {
        const std::string number(word(chunk, 1).value());
        return "MSG " + number + " U " + std::to_string(73 + email.size()) +
               "\r\nMIME-Version: 1.0\r\nContent-Type: text/x-msmsgscontrol\r\nTypingUserx " +
               email + "\r\n\r\n\r\n";
    }
    if (chunk.find("<me>") == std::string::npos) return chunk;
    const std::size_t length = messageTools::payloadOf(chunk).size();
    chunk = replaceFirst(chunk, "<me>", email);
    return replaceFirst(chunk, " " + std::to_string(length),
                        " " + std::to_string(length - 4 + email.size()));
}

void replayAndCompare(const std::vector<RecordedRead>& reads,
                      const std::vector<std::string>& expected) {
    const auto received = replay(reads);
    for (std::size_t index = 0; index < reads.size(); ++index) {
        EXPECT_EQ(escaped(received[index].bytes), escaped(expected[index])) << index;
    }
}

TEST_P(Replay, EveryReadArrivesUnchangedAndUncutWithoutConstantsAndCommands) {
    const auto reads = readRecording(GetParam());
    Program program;
    program.waitUntilReady();
    program.setSetting("constants", "False");
    std::vector<std::string> expected;
    for (const RecordedRead& read : reads)
        expected.push_back(read.bytes);
    replayAndCompare(reads, expected);
}

TEST_P(Replay, OnlyCommandsAndTokensChangeWithDefaultSettings) {
    const auto reads = readRecording(GetParam());
    Program program;
    program.waitUntilReady();
    std::vector<std::string> expected;
    std::string email;
    for (const RecordedRead& read : reads) {
        if (!read.fromClient && read.bytes.starts_with("USR")) email = word(read.bytes, 3).value();
        expected.push_back(treated(read, email));
    }
    replayAndCompare(reads, expected);
}

TEST_P(Replay, TheChosenStatusChangesTheFirstStatusCommandAlone) {
    const auto reads = readRecording(GetParam());
    Program program;
    program.waitUntilReady();
    program.setSetting("constants", "False");
    program.setSetting("initialStatus", "Busy");
    bool first = true;
    std::vector<std::string> expected;
    for (const RecordedRead& read : reads) {
        expected.push_back(read.bytes);
        if (read.fromClient && read.bytes.starts_with("CHG") && std::exchange(first, false)) {
            ASSERT_NE(read.bytes.find("NLN"), std::string::npos);
            expected.back().replace(read.bytes.find("NLN"), 3, "BSY");
        }
    }
    replayAndCompare(reads, expected);
    const bool signIn = GetParam().find("-ns-") != std::string::npos;
    EXPECT_EQ(first, !signIn);
}

INSTANTIATE_TEST_SUITE_P(Recordings, Replay, testing::ValuesIn(recordingNames()),
                         [](const auto& info) {
                             std::string name = info.param.substr(0, info.param.find('.'));
                             std::erase(name, '-');
                             return name;
                         });

}  // namespace

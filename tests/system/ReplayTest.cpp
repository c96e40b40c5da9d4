#include "tests/support/Program.h"
#include "tests/support/Recording.h"
#include "tests/support/Relay.h"

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

TEST_P(Replay, EveryRecordedReadArrivesUnchangedAndUncut) {
    const auto reads = readRecording(GetParam());
    Program program;
    program.waitUntilReady();
    const auto received = replay(reads);
    for (std::size_t index = 0; index < reads.size(); ++index) {
        EXPECT_EQ(escaped(received[index].bytes), escaped(reads[index].bytes)) << index;
    }
}

TEST_P(Replay, TheChosenStatusChangesTheFirstStatusCommandAlone) {
    const auto reads = readRecording(GetParam());
    Program program;
    program.waitUntilReady();
    program.setSetting("initialStatus", "Busy");
    const auto received = replay(reads);
    bool first = true;
    for (std::size_t index = 0; index < reads.size(); ++index) {
        std::string expected = reads[index].bytes;
        if (reads[index].fromClient && expected.starts_with("CHG") && std::exchange(first, false)) {
            ASSERT_NE(expected.find("NLN"), std::string::npos);
            expected.replace(expected.find("NLN"), 3, "BSY");
        }
        EXPECT_EQ(escaped(received[index].bytes), escaped(expected)) << index;
    }
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

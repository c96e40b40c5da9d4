#include "tests/support/Relay.h"
#include "tests/support/linux/Program.h"

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <future>
#include <random>

namespace {

using namespace std::string_literals;

struct Kind {
    std::string name;
    std::function<std::vector<std::string>()> pieces;
};

std::string randomBytes(std::size_t count, unsigned start) {
    std::mt19937 random(start);
    std::uniform_int_distribution<int> anyByte(0, 255);
    std::string bytes(count, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(anyByte(random));
    return bytes;
}

std::vector<std::string> singly(const std::string& bytes) {
    std::vector<std::string> pieces;
    for (const char byte : bytes)
        pieces.emplace_back(1, byte);
    return pieces;
}

/// Heads that some rule knows, each with random bytes behind it.
std::vector<std::string> knownHeads() {
    const std::vector<std::string> heads = {"*",
                                            "*\x02"s,
                                            "*\x02\x11\x22\x7F\xFF"s,
                                            "*\x05\x11\x22\x80\x00"s,
                                            "\x04\x01"s,
                                            "\x04\x01\x80"s,
                                            "ODC2",
                                            "ODC2" + std::string(24, '\0'),
                                            "VER",
                                            "VER ",
                                            "CHG",
                                            "CHG 9 NLN",
                                            "MSG",
                                            "MSG 1 U 9999999999\r\n",
                                            "\r\n\r\n",
                                            std::string(100000, ' '),
                                            std::string(100000, '\0'),
                                            "%"};
    std::vector<std::string> pieces;
    unsigned start = 0;
    for (const std::string& head : heads) {
        pieces.push_back(head);
        pieces.push_back(head + randomBytes(500, ++start));
    }
    return pieces;
}

const std::vector<Kind> kinds = {
    {"OneByteAtATime", [] { return singly(randomBytes(3000, 1)); }},
    {"OneLetterAtATime", [] { return singly("VER 1 MSNP9 CVR0\r\nCHG 2 NLN 0\r\n"); }},
    {"AMegabyteOfRandomBytes", [] { return std::vector{randomBytes(1 << 20, 2)}; }},
    {"AMegabyteOfText",
     [] { return std::vector{"MSG 1 N 1048576\r\n"s + std::string(1 << 20, 'a')}; }},
    {"AMegabyteOfBlanks", [] { return std::vector{std::string(1 << 20, ' ')}; }},
    {"AMegabyteOfLineEnds",
     [] {
         std::string lines = "MSG";
         for (int count = 0; count < 500000; ++count)
             lines += "\r\n";
         return std::vector{lines};
     }},
    {"AMegabyteOfFrames",
     [] {
         std::string frames;
         for (int count = 0; count < 170000; ++count)
             frames += "*\x01\0\0\0\0"s;
         return std::vector{frames};
     }},
    {"HeadsThatARuleKnows", knownHeads},
};

struct Attack {
    Kind kind;
    bool fromClient;
};

void PrintTo(const Attack& attack, std::ostream* out) { *out << attack.kind.name; }

class HostileBytes : public testing::TestWithParam<Attack> {};

TEST_P(HostileBytes, NeitherStopTheProgramNorReachAnotherConnection) {
    Program program;
    program.waitUntilReady();
    Relay bystander = Relay::through(Program::port);
    // Each piece on a connection of its own, and all of them on one more.
    const std::vector<std::string> pieces = GetParam().kind.pieces();
    Relay victim = Relay::through(Program::port);
    Peer& sender = GetParam().fromClient ? victim.client : victim.server;
    Peer& receiver = GetParam().fromClient ? victim.server : victim.client;
    auto sink = std::async(std::launch::async, [&] { return receiver.receiveToEnd(); });
    for (const std::string& piece : pieces) {
        sender.send(piece);
        if (pieces.size() > 100) continue;
        Relay alone = Relay::through(Program::port);
        auto drained = std::async(std::launch::async, [&] {
            return (GetParam().fromClient ? alone.server : alone.client).receiveToEnd();
        });
        (GetParam().fromClient ? alone.client : alone.server).send(piece);
        (GetParam().fromClient ? alone.client : alone.server).finishSending();
        drained.get();
        EXPECT_EQ(bystander.up("PNG\r\n"), "PNG\r\n");
    }
    sender.finishSending();
    sink.get();
    EXPECT_EQ(bystander.up("PNG\r\n"), "PNG\r\n");
    EXPECT_EQ(bystander.down("QNG 50\r\n"), "QNG 50\r\n");
    EXPECT_TRUE(bystander.client.isSilent());
    EXPECT_TRUE(bystander.server.isSilent());
    EXPECT_EQ(Relay::through(Program::port).up("PNG\r\n"), "PNG\r\n");
    program.signal(SIGTERM);
    EXPECT_EQ(program.waitForEnd(), 0) << program.errors();
}

std::vector<Attack> attacks() {
    std::vector<Attack> all;
    for (const Kind& kind : kinds) {
        all.push_back({kind, true});
        all.push_back({kind, false});
    }
    return all;
}

INSTANTIATE_TEST_SUITE_P(Kinds, HostileBytes, testing::ValuesIn(attacks()), [](const auto& info) {
    return info.param.kind.name + (info.param.fromClient ? "FromTheClient" : "FromTheServer");
});

TEST(Stranger, ThatABrowserCouldBeReachesNothing) {
    Program program;
    program.waitUntilReady();
    Relay bystander = Relay::through(Program::port);
    // A form of a web page, posted here: what it holds may come in a read of its own.
    for (const std::string& first :
         {"POST / HTTP/1.1\r\nHost: 127.0.0.1:1090\r\n\r\n"s,
          "MSG 1 N 200\r\n"s + std::string(70000, 'p'), "\x16\x03\x01"s}) {
        Peer page = Peer::connectedTo(Program::port);
        page.send(first);
        page.waitForEnd();
    }
    EXPECT_EQ(bystander.up("PNG\r\n"), "PNG\r\n");
    EXPECT_TRUE(bystander.server.isSilent());
    program.signal(SIGTERM);
    EXPECT_EQ(program.waitForEnd(), 0) << program.errors();
}

TEST(BlockedSide, ForwardsNothingMoreWhileAllElseGoesOn) {
    Program program;
    program.waitUntilReady();
    Relay bystander = Relay::through(Program::port);
    Relay victim = Relay::through(Program::port);
    victim.client.send("*\x02\x11\x22\x80\x00 stuck"s);
    victim.client.send(std::string(300000, 'x'));
    EXPECT_EQ(victim.down("QNG 50\r\n"), "QNG 50\r\n");
    EXPECT_EQ(bystander.up("PNG\r\n"), "PNG\r\n");
    EXPECT_TRUE(victim.server.isSilent());
    victim.client.close();
    victim.server.waitForEnd();
}

TEST(DirectConnect, FloodsOfItDoNotPileUp) {
    Program program;
    program.waitUntilReady();
    Relay bystander = Relay::through(Program::port);
    Relay victim = Relay::through(Program::port);
    std::string header(76, '\x01');
    header.replace(0, 4, "ODC2");
    auto sink = std::async(std::launch::async, [&] { return victim.server.receiveToEnd(); });
    for (int count = 0; count < 20000; ++count)
        victim.client.send(header);
    EXPECT_EQ(bystander.up("PNG\r\n"), "PNG\r\n");
    victim.client.close();
    sink.get();
    program.signal(SIGTERM);
    EXPECT_EQ(program.waitForEnd(), 0) << program.errors();
}

}  // namespace

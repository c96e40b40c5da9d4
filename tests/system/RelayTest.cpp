#include "tests/support/Relay.h"
#include "tests/support/linux/Program.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <future>
#include <vector>

namespace {

class Relaying : public testing::Test {
protected:
    Program program;

    Relaying() { program.waitUntilReady(); }
    [[nodiscard]] static Relay relay() { return Relay::through(Program::port); }
};

TEST_F(Relaying, TheReplyRepeatsPortAndAddressBehindFourAndNinety) {
    Server listener;
    Peer client = Peer::connectedTo(Program::port);
    client.send(socksRequest(listener.port()));
    const Peer server = listener.accept();
    const auto port = listener.port();
    const std::string expected = {
        '\x04', '\x5A', static_cast<char>(port / 256), static_cast<char>(port % 256), '\x7F', '\0',
        '\0',   '\x01'};
    EXPECT_EQ(escaped(client.receive(8)), escaped(expected));
    EXPECT_TRUE(client.isSilent());
}

TEST_F(Relaying, IsServedOnAllLocalAddresses) {
    const Descriptor descriptor(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(Program::port);
    inet_pton(AF_INET, "127.9.8.7", &address.sin_addr);
    EXPECT_EQ(connect(descriptor.get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
}

TEST_F(Relaying, TheServerIsDroppedWhenTheClientCloses) {
    Relay pair = relay();
    pair.client.close();
    pair.server.waitForEnd();
}

TEST_F(Relaying, TheClientIsDroppedWhenTheServerCloses) {
    Relay pair = relay();
    pair.server.close();
    pair.client.waitForEnd();
}

TEST_F(Relaying, ABrokenConnectionEndsThePairToo) {
    Relay pair = relay();
    pair.server.breakOff();
    pair.client.waitForEnd();
}

TEST_F(Relaying, WhatWasSentBeforeTheCloseStillArrives) {
    Relay pair = relay();
    pair.server.send("OUT OTH\r\n");
    pair.server.close();
    EXPECT_EQ(pair.client.receiveToEnd(), "OUT OTH\r\n");
}

TEST_F(Relaying, AnEndedConnectionLeavesNoDescriptor) {
    relay().client.close();
    ASSERT_TRUE(becomesTrue([&, before = std::size_t{0}]() mutable {
        return std::exchange(before, program.openDescriptors()) == program.openDescriptors();
    }));
    const std::size_t atRest = program.openDescriptors();
    for (int count = 0; count < 10; ++count) {
        Relay pair = relay();
        pair.client.close();
        pair.server.waitForEnd();
    }
    EXPECT_TRUE(becomesTrue([&] { return program.openDescriptors() <= atRest; }));
}

TEST_F(Relaying, AnUnreachableServerIsNotAnsweredAndItsClientCostsNoDescriptor) {
    Server listener;
    const std::uint16_t closedPort = listener.port();
    listener.close();
    const std::size_t before = program.openDescriptors();
    Peer client = Peer::connectedTo(Program::port);
    client.send(socksRequest(closedPort));
    client.send("VER 1 MSNP10 CVR0\r\n");
    EXPECT_EQ(relay().up("PNG\r\n"), "PNG\r\n");
    EXPECT_TRUE(client.isSilent());
    client.close();
    EXPECT_TRUE(becomesTrue([&] { return program.openDescriptors() <= before; }));
}

TEST_F(Relaying, TwoHundredConnectionsAreKeptApart) {
    std::vector<Relay> pairs;
    for (int count = 0; count < 200; ++count)
        pairs.push_back(relay());
    const auto text = [&](std::size_t index) { return "QNG " + std::to_string(index) + "\r\n"; };
    for (std::size_t index = 0; index < pairs.size(); ++index)
        pairs[index].client.send(text(index));
    for (std::size_t index = 0; index < pairs.size(); ++index) {
        EXPECT_EQ(pairs[index].server.receive(text(index).size()), text(index));
        EXPECT_EQ(pairs[index].down(text(index)), text(index));
    }
}

TEST_F(Relaying, ACommandIsSentOnWhileAnotherConnectionIsFlooded) {
    Relay flooded = relay();
    Relay quiet = relay();
    const std::string block(65536, 'x');
    auto flood = std::async(std::launch::async, [&] {
        for (int count = 0; count < 200; ++count)
            flooded.client.send(block);
    });
    auto sink =
        std::async(std::launch::async, [&] { return flooded.server.receive(200 * block.size()); });
    for (int count = 0; count < 100; ++count)
        EXPECT_EQ(quiet.up("PNG\r\n"), "PNG\r\n");
    flood.get();
    EXPECT_EQ(sink.get(), std::string(200 * block.size(), 'x'));
}

TEST_F(Relaying, AReceiverThatStallsMakesItsSenderWaitAndLosesNothing) {
    constexpr std::size_t mebibyte = 1024 * 1024;
    Relay pair = relay();
    const std::size_t before = program.memory();
    std::string block(mebibyte, '\0');
    constexpr std::size_t blocks = 64;
    auto sender = std::async(std::launch::async, [&] {
        for (std::size_t count = 0; count < blocks; ++count) {
            std::fill(block.begin(), block.end(), static_cast<char>('A' + count % 26));
            pair.server.send(block);
        }
    });
    // Nobody reads: what the program and the system keep is full at some time, and no more is
    // taken.
    std::size_t most = 0;
    ASSERT_EQ(sender.wait_for(std::chrono::seconds(2)), std::future_status::timeout);
    most = program.memory() - before;
    EXPECT_LT(most, 8 * mebibyte);
    Relay other = relay();
    EXPECT_EQ(other.up("PNG\r\n"), "PNG\r\n");
    for (std::size_t count = 0; count < blocks; ++count) {
        const std::string expected(mebibyte, static_cast<char>('A' + count % 26));
        ASSERT_TRUE(pair.client.receive(mebibyte) == expected) << count;
    }
    sender.get();
}

TEST_F(Relaying, WithoutMemoryTheConnectionThatNeedsItEndsAlone) {
    Relay stalled = relay();
    Relay other = relay();
    if (!program.limitMemory(std::size_t{1} << 16)) GTEST_SKIP() << "there is no such limit";
    auto sender = std::async(std::launch::async, [&] {
        try {
            for (;;)
                stalled.server.send(std::string(65536, 'x'));
        } catch (const std::runtime_error&) {
        }
    });
    // Nobody reads, and what waits finds no memory.
    EXPECT_EQ(sender.wait_for(waitLimit), std::future_status::ready);
    EXPECT_EQ(other.up("PNG\r\n"), "PNG\r\n");
    EXPECT_EQ(other.down("QNG 50\r\n"), "QNG 50\r\n");
    EXPECT_NE(program.errors().find("an event was broken off: std::bad_alloc.\n"),
              std::string::npos)
        << program.errors();
}

TEST_F(Relaying, AStalledReceiverThatClosesFreesItsSender) {
    Relay pair = relay();
    auto sender = std::async(std::launch::async, [&] {
        try {
            for (;;)
                pair.server.send(std::string(65536, 'x'));
        } catch (const std::runtime_error&) {
        }
    });
    ASSERT_EQ(sender.wait_for(std::chrono::seconds(1)), std::future_status::timeout);
    pair.client.close();
    EXPECT_EQ(sender.wait_for(waitLimit), std::future_status::ready);
}

TEST(Descriptors, TheListenerGoesOnWhenTheyRunOutAndOneGetsFree) {
    Program program({.environment = {}, .descriptors = 48});
    program.waitUntilReady();
    std::vector<Relay> pairs;
    for (int count = 0; count < 8; ++count)
        pairs.push_back(Relay::through(Program::port));
    std::vector<Peer> waiting;
    for (int count = 0; count < 60; ++count)
        waiting.push_back(Peer::connectedTo(Program::port));
    ASSERT_TRUE(becomesTrue([&] { return program.openDescriptors() >= 47; }));
    EXPECT_EQ(pairs.front().up("PNG\r\n"), "PNG\r\n") << program.errors();
    waiting.clear();
    EXPECT_EQ(Relay::through(Program::port).up("PNG\r\n"), "PNG\r\n");
}

}  // namespace

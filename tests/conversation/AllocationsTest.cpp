#include "proxy/filters.h"
#include "stores/options.h"
#include "tests/conversation/LoneConversation.h"
#include "tests/conversation/allocated.h"
#include "tests/support/messages.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

/// What the filters ask for memory for: what is kept or rewritten at more length than before, and
/// not what merely passes.
class Allocations : public testing::Test {
protected:
    LoneConversation conversation;
    std::string rewritten;

    /// How often memory is asked for by a chunk that was preceded by one of its kind.
    std::size_t ofClient(const std::string& chunk) {
        return ofSecond(
            [&] { EXPECT_EQ(filterClientChunk(chunk, rewritten, conversation), chunk); });
    }
    std::size_t ofServer(const std::string& chunk) {
        return ofSecond(
            [&] { EXPECT_EQ(filterServerChunk(chunk, rewritten, conversation), chunk); });
    }

private:
    template <typename Filter>
    std::size_t ofSecond(Filter filter) {
        SettingsStore& settings = conversation.services.settings;
        const SettingsStore::OneLook look(settings);
        // The file is looked at here, with what that takes.
        (void)isOn(settings, options::progress);
        filter();
        const std::size_t before = allocated();
        filter();
        return allocated() - before;
    }
};

TEST_F(Allocations, AreCounted) {
    const std::size_t before = allocated();
    const auto one = std::make_unique<int>(1);
    const std::string longOne(static_cast<std::size_t>(99 + *one), 'x');
    EXPECT_EQ(allocated() - before, 2U);
}

TEST_F(Allocations, AreNotMadeForCommandsThatPass) {
    for (const std::size_t size : {std::size_t{250}, std::size_t{65536}}) {
        const std::string line = "ILN 5 NLN " + std::string(size, 'x') + "\r\n";
        EXPECT_EQ(ofClient(line), 0U) << size;
        EXPECT_EQ(ofServer(line), 0U) << size;
    }
    EXPECT_EQ(ofClient("PNG\r\n"), 0U);
    EXPECT_EQ(ofServer("QNG 50\r\n"), 0U);
}

TEST_F(Allocations, AreNotMadeForTextsWithoutTokens) {
    EXPECT_EQ(ofClient(clientText(std::string(200, 'x'))), 0U);
    EXPECT_EQ(ofClient(clientText(std::string(1500, 'x'))), 0U);
}

TEST_F(Allocations, AreNotMadeForTypingNotices) {
    const std::string notice =
        "MIME-Version: 1.0\r\nContent-Type: text/x-msmsgscontrol\r\nTypingUser: "
        "ann@example.com\r\n\r\n\r\n";
    const std::string length = std::to_string(notice.size());
    EXPECT_EQ(ofClient("MSG 5 U " + length + "\r\n" + notice), 0U);
    EXPECT_EQ(ofServer("MSG bob@example.com Bob " + length + "\r\n" + notice), 0U);
}

TEST_F(Allocations, AreNotMadeForPeerToPeerMessages) {
    const std::string data = "MIME-Version: 1.0\r\nContent-Type: application/x-msnmsgrp2p\r\n\r\n" +
                             std::string(1100, 'x');
    const std::string length = std::to_string(data.size());
    EXPECT_EQ(ofClient("MSG 5 D " + length + "\r\n" + data), 0U);
    EXPECT_EQ(ofServer("MSG bob@example.com Bob " + length + "\r\n" + data), 0U);
}

TEST_F(Allocations, AreMadeForTheCodeOfWhatAContactSaysAndNoMore) {
    EXPECT_LE(ofServer(contactText(std::string(200, 'x'))), 1U);
}

}  // namespace

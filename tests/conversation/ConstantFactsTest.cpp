#include "proxy/filters.h"
#include "tests/conversation/LoneConversation.h"
#include "tests/support/messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace {

using testing::Each;
using testing::IsEmpty;
using testing::Not;

/// Writes down what is asked of machine, clock and player.
struct AskedFacts final : MachineFacts, Clock, MediaPlayer {
    std::vector<std::string> asked;

    [[nodiscard]] MemoryStatus memory() override {
        asked.emplace_back("memory");
        return {536870912, 134217728};
    }
    [[nodiscard]] std::chrono::milliseconds uptime() override {
        asked.emplace_back("uptime");
        return std::chrono::milliseconds{3909000};
    }
    [[nodiscard]] std::string timeText() override {
        asked.emplace_back("time");
        return "12:30:05";
    }
    [[nodiscard]] std::string dateText() override {
        asked.emplace_back("date");
        return "11/21/26";
    }
    [[nodiscard]] Window WinampWindow() override {
        asked.emplace_back("song");
        return 1;
    }
    [[nodiscard]] std::string WindowTextOf(Window /*window*/) override {
        asked.emplace_back("song");
        return "1. A - B - Winamp";
    }
    void command(Window /*window*/, int /*number*/) override {}
};

/// What is asked while a text of the client passes.
class FactsForTexts : public testing::Test {
protected:
    std::vector<std::string> askedFor(const std::string& text) {
        facts.asked.clear();
        std::string rewritten;
        sent = filterClientChunk(clientText(text), rewritten, conversation);
        return facts.asked;
    }

    AskedFacts facts;
    LoneProgram program;
    Services services{{program.facilities.settings, facts, facts, program.facilities.chance,
                       program.facilities.registry, facts, program.facilities.browser,
                       program.facilities.notes, "cobweave"},
                      program.values,
                      program,
                      program.windows};
    struct Silent final : Conversation {
        using Conversation::Conversation;
        [[nodiscard]] bool sendToClient(std::string_view /*bytes*/) override { return true; }
    } conversation{services};
    std::string sent;
};

TEST_F(FactsForTexts, AreAskedForOfTheTokensThatStandThere) {
    const std::vector<std::pair<std::string, std::string>> kinds{
        {"<t>", "time"},    {"<d>", "date"},    {"<tr>", "memory"}, {"<ur>", "memory"},
        {"<ru>", "memory"}, {"<ut>", "uptime"}, {"<ws>", "song"}};
    for (const auto& [token, fact] : kinds) {
        EXPECT_THAT(askedFor("hello " + token), Not(IsEmpty())) << token;
        EXPECT_THAT(facts.asked, Each(fact)) << token;
        EXPECT_EQ(sent.find(token), std::string::npos) << sent;
    }
}

TEST_F(FactsForTexts, AreAskedForByNoOtherText) {
    for (const char* const text :
         {"hello", "t d tr ur ru ut ws", "<>", "<x> & <T>", "<mn> <me> <cn> <ce>"}) {
        EXPECT_THAT(askedFor(text), IsEmpty()) << text;
    }
}

}  // namespace

#pragma once

#include "conversation/Conversation.h"
#include "tests/support/FakeFacilities.h"
#include "tests/support/Spine.h"

#include <string>
#include <string_view>
#include <vector>

/// What a conversation needs, without a host.
class LoneProgram : public ProgramActions {
public:
    FakeFacilities facilities;
    ProcessValues values;
    Services services{facilities.all(), values, *this};
    std::vector<std::string> nicks;
    int notesShown = 0;

    void ApplyNickTemplate(std::string& text) override { nicks.push_back(text); }
    void ShowNotes() override { ++notesShown; }
    [[noreturn]] void ForceExit() override { throw ProcessEnded(); }
};

/// A conversation without a connection, for what cannot be seen or brought about through one.
class LoneConversation : public LoneProgram, public Conversation {
public:
    using LoneProgram::services;

    std::vector<std::string> popups;
    std::vector<std::string> logged;
    std::vector<std::string> sent;
    bool clientIsGone = false;

    LoneConversation() : Conversation(LoneProgram::services) {}

    [[nodiscard]] bool sendToClient(std::string_view bytes) override {
        if (!clientIsGone) sent.emplace_back(bytes);
        return !clientIsGone;
    }
    void showPopup(std::string_view text) override { popups.emplace_back(text); }
    void addToLog(std::string_view text) override { logged.emplace_back(text); }
};

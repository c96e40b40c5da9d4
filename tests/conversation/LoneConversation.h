#pragma once

#include "conversation/Conversation.h"
#include "conversation/ProgramWindows.h"
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
    ProgramWindows windows;
    Services services{facilities.all(), values, *this, windows};
    std::vector<std::string> nicks;
    std::vector<std::string> popups;

    LoneProgram() {
        windows.popup = [this](std::string_view text) { popups.emplace_back(text); };
    }

    void ApplyNickTemplate(std::string& text) override { nicks.push_back(text); }
    [[noreturn]] void ForceExit() override { throw ProcessEnded(); }
};

/// A conversation without a connection, for what cannot be seen or brought about through one.
class LoneConversation : public LoneProgram, public Conversation {
public:
    using LoneProgram::services;

    std::vector<std::string> sent;
    bool clientIsGone = false;

    LoneConversation() : Conversation(LoneProgram::services) {}

    [[nodiscard]] bool sendToClient(std::string_view bytes) override {
        if (!clientIsGone) sent.emplace_back(bytes);
        return !clientIsGone;
    }
};

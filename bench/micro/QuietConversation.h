#pragma once

#include "conversation/Conversation.h"
#include "conversation/ProgramWindows.h"
#include "platform/Clock.h"
#include "platform/MachineFacts.h"
#include "platform/Registry.h"
#include "tests/support/FakeFacilities.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <string_view>

/// A conversation on the real machine, with a store whose file has not changed for long, as it is
/// for nearly every chunk. What it says goes nowhere.
class QuietConversation final : private ProgramActions, public Conversation {
public:
    QuietConversation() : Conversation(shared) { set("callby", "e"); }

    void set(std::string_view key, std::string_view value) {
        facilities.settings.WriteSetting("Options", key, value);
        const auto now = std::filesystem::file_time_type::clock::now();
        std::filesystem::last_write_time(facilities.folder.path() / "settings.db",
                                         now - std::chrono::hours(1));
    }

    [[nodiscard]] bool sendToClient(std::string_view /*bytes*/) override { return true; }

private:
    void ApplyNickTemplate(std::string& /*text*/) override {}
    [[noreturn]] void ForceExit() override { std::abort(); }

    FakeFacilities facilities;
    std::unique_ptr<MachineFacts> machine = makeMachineFacts();
    std::unique_ptr<Clock> clock = makeClock();
    std::unique_ptr<Registry> registry = makeRegistry();
    ProcessValues values;
    ProgramWindows windows;
    Services shared{{facilities.settings, *machine, *clock, facilities.chance, *registry,
                     facilities.player, facilities.browser, facilities.notes, "cobweave"},
                    values,
                    *this,
                    windows};
};

#pragma once

#include "base/Failure.h"
#include "conversation/Conversation.h"
#include "platform/Browser.h"
#include "platform/Chance.h"
#include "platform/Clock.h"
#include "platform/MachineFacts.h"
#include "platform/MediaPlayer.h"
#include "platform/Registry.h"
#include "stores/NotesStore.h"
#include "stores/SettingsStore.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

/// Time, chance and machine as the test wants them; the stores are real, in a folder of their own.
struct FakeFacilities {
    struct Machine final : MachineFacts {
        MemoryStatus status{536870912, 134217728};
        std::chrono::milliseconds running{3909000};
        [[nodiscard]] MemoryStatus memory() override { return status; }
        [[nodiscard]] std::chrono::milliseconds uptime() override { return running; }
    } machine;

    struct FixedClock final : Clock {
        std::string time = "12:30:05";
        std::string date = "11/21/26";
        [[nodiscard]] std::string timeText() override { return time; }
        [[nodiscard]] std::string dateText() override { return date; }
    } clock;

    struct FixedChance final : Chance {
        float next = 0.5F;
        [[nodiscard]] float draw() override { return next; }
    } chance;

    struct FixedRegistry final : Registry {
        bool hasAddOn = false;
        [[nodiscard]] bool currentUserHasKey(std::string_view path) override {
            return hasAddOn && path == "Software\\Patchou\\MsgPlus2";
        }
    } registry;

    struct Player final : MediaPlayer {
        std::string title;
        std::vector<int> commands;
        [[nodiscard]] Window WinampWindow() override { return title.empty() ? 0 : 1; }
        [[nodiscard]] std::string WindowTextOf(Window window) override {
            return window == 0 ? "" : title;
        }
        void command(Window window, int number) override {
            if (window != 0) commands.push_back(number);
        }
        void show(std::string newTitle) {
            title = std::move(newTitle);
            changed();
        }
    } player;

    struct Pages final : Browser {
        std::vector<std::string> opened;
        bool missing = false;
        void open(std::string_view address) override {
            if (missing) throw Failure("no browser");
            opened.emplace_back(address);
        }
    } browser;

    TemporaryFolder folder;
    SettingsStore settings;
    NotesStore notes;
    std::string commandLine = "cobweave";

    FakeFacilities() : FakeFacilities("") {}
    /// With stores in another folder than its own, if that is named.
    explicit FakeFacilities(const std::filesystem::path& other)
        : settings((other.empty() ? folder.path() : other) / "settings.db",
                   [](std::string_view) {}),
          notes((other.empty() ? folder.path() : other) / "notes.cwv", [](std::string_view) {}) {}

    [[nodiscard]] Facilities all() {
        return {settings, machine, clock, chance, registry, player, browser, notes, commandLine};
    }
};

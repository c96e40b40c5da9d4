#include "platform/Client.h"
#include "platform/ForeignWindows.h"
#include "platform/windows/wideText.h"
#include "platform/windows/win32.h"
#include "tests/platform/shared/PlayerStandIn.h"
#include "tests/platform/windows/OtherProgram.h"
#include "tests/support/Relay.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Variable.h"
#include "tests/support/comesTrue.h"
#include "tests/support/messages.h"
#include "tests/support/readFile.h"
#include "tests/support/storedSettings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;

using testing::HasSubstr;

constexpr std::uint16_t port = 1090;

/// Which no code page has together.
const std::string anyLetters = "Bj\xC3\xB6rk \xD0\x96\xD1\x83\xD0\xBA \xE6\x97\xA5\xE6\x9C\xAC";

/// A process of the program. It ends with this object.
class Copy {
public:
    explicit Copy(const fs::path& file) {
        STARTUPINFOW how{};
        how.cb = sizeof how;
        PROCESS_INFORMATION made{};
        EXPECT_NE(CreateProcessW(file.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr,
                                 nullptr, &how, &made),
                  0)
            << GetLastError();
        CloseHandle(made.hThread);
        process = made.hProcess;
        number = made.dwProcessId;
    }
    ~Copy() {
        kill();
        CloseHandle(process);
    }
    Copy(const Copy&) = delete;
    Copy& operator=(const Copy&) = delete;

    [[nodiscard]] bool isRunning() const { return WaitForSingleObject(process, 0) == WAIT_TIMEOUT; }
    void kill() const {
        TerminateProcess(process, 0);
        EXPECT_EQ(WaitForSingleObject(process, INFINITE), WAIT_OBJECT_0);
    }
    /// Waits for its end and gives its exit code; nothing where it does not end.
    [[nodiscard]] std::optional<DWORD> exitCode() const {
        if (!comesTrue([this] { return !isRunning(); })) return std::nullopt;
        DWORD code = 0;
        GetExitCodeProcess(process, &code);
        return code;
    }

    /// Its top-level windows.
    [[nodiscard]] std::vector<HWND> windows() const {
        std::vector<HWND> found;
        HWND window = nullptr;
        while ((window = FindWindowExW(nullptr, window, nullptr, nullptr)) != nullptr) {
            DWORD owner = 0;
            GetWindowThreadProcessId(window, &owner);
            if (owner == number) found.push_back(window);
        }
        return found;
    }
    /// Waits until it shows a window of this title; null where it does not.
    [[nodiscard]] HWND shown(const std::string& title) const {
        HWND found = nullptr;
        (void)comesTrue([&] {
            const std::vector<HWND> all = windows();
            const auto has = [&](HWND window) {
                return IsWindowVisible(window) != 0 && titleOf(window) == title;
            };
            const auto place = std::ranges::find_if(all, has);
            if (place != all.end()) found = *place;
            return found != nullptr;
        });
        return found;
    }
    /// What its windows answer to a message, which they are sent as the system does.
    [[nodiscard]] std::vector<DWORD_PTR> answersTo(UINT message, WPARAM first) const {
        constexpr UINT longest = 20000;
        std::vector<DWORD_PTR> answers;
        for (const HWND window : windows()) {
            DWORD_PTR answer = 0;
            const LRESULT isAnswered =
                SendMessageTimeoutW(window, message, first, 0, SMTO_NORMAL, longest, &answer);
            if (isAnswered != 0) answers.push_back(answer);
        }
        return answers;
    }

private:
    HANDLE process = nullptr;
    DWORD number = 0;
};

/// The program itself among the windows of others, as it runs in the Wine prefix of a Messenger.
/// Its folder, where it has settings and notes too, has letters that no code page has together.
class BesideMessenger : public testing::Test {
protected:
    BesideMessenger() {
        fs::create_directory(folder);
        fs::copy_file(COBWEAVE_EXECUTABLE, executable);
    }
    ~BesideMessenger() override {
        if (!program) return;
        program.reset();
        EXPECT_TRUE(comesTrue([] { return !isServing(); }));
    }

    void start(const std::vector<std::pair<std::string, std::string>>& options) {
        ASSERT_TRUE(comesTrue([] { return !isServing(); }));
        writeSettings(folder, storedOptions(options));
        program.emplace(executable);
        ASSERT_TRUE(comesTrue([] { return isServing(); }));
    }

    /// Of the store, as it is now.
    [[nodiscard]] std::string stored(std::string_view section, std::string_view key) const {
        SettingsStore store(storeIn(folder), {});
        return store.ReadSetting(section, key);
    }
    /// The session ends, as the system does it: the program is asked, and then told.
    void endSession() const {
        const std::vector<DWORD_PTR> answers = program->answersTo(WM_QUERYENDSESSION, 0);
        EXPECT_FALSE(answers.empty());
        EXPECT_THAT(answers, testing::Each(DWORD_PTR{TRUE}));
        EXPECT_TRUE(program->isRunning());
        (void)program->answersTo(WM_ENDSESSION, TRUE);
    }

    TemporaryFolder temporary;
    const fs::path folder = temporary.path() / wideText::fromUtf8(anyLetters);
    const fs::path executable = folder / "cobweave.exe";
    const Variable settings{"APPDATA", wideText::toUtf8(folder.wstring())};
    std::optional<Copy> program;

private:
    [[nodiscard]] static bool isServing() {
        try {
            (void)Peer::connectedTo(port);
            return true;
        } catch (const std::runtime_error&) {
            return false;
        }
    }
};

TEST_F(BesideMessenger, GivesItsWindowTheUsersTitle) {
    OtherProgram messenger;
    const HWND first = messenger.open("msnmsblclass", "MSN Messenger");
    start({{"windowrename", "1"}, {"windowrenamecaption", anyLetters}});
    EXPECT_TRUE(comesTrue([&] { return titleOf(first) == anyLetters; }));
    messenger.ask("close " + std::to_string(fromSystem(first)));
    const HWND second = messenger.open("msnmsblclass", "MSN Messenger");
    EXPECT_TRUE(comesTrue([&] { return titleOf(second) == anyLetters; }));
}

TEST_F(BesideMessenger, SaysWhatWinampPlaysAndSteersIt) {
    PlayerStandIn player;
    player.show(PlayerStandIn::Status::Playing, "Ann", anyLetters);
    start({});
    Relay notification = Relay::through(port);
    (void)notification.down("USR 3 OK ann@example.com Ann%20Lee 1 0\r\n");
    Relay conversation = Relay::through(port);
    (void)conversation.down("JOI bob@example.com Bob\r\n");
    EXPECT_THAT(conversation.up(clientText("I hear <ws>")),
                HasSubstr("I hear Ann - " + anyLetters));
    (void)conversation.up(clientText("!winamp next"));
    EXPECT_TRUE(comesTrue([&] { return player.commands() == std::vector{40048}; }));
}

TEST_F(BesideMessenger, EndsWithTheSessionAndLeavesAStoreThatIsWhole) {
    start({{"initialStatus", "Busy"}});
    endSession();
    EXPECT_EQ(program->exitCode(), 0U);
    const fs::path file = storeIn(folder);
    EXPECT_TRUE(fs::exists(file));
    EXPECT_FALSE(fs::exists(fs::path(file) += "-wal"));
    EXPECT_EQ(stored("Options", "initialStatus"), "Busy");
}

TEST_F(BesideMessenger, EndsWithTheSessionThoughANoteIsBeingChanged) {
    start({{"useristyping", "False"}});
    Relay conversation = Relay::through(port);
    (void)conversation.up(clientText("!note buy milk"));
    (void)conversation.up(clientText("!notes"));
    const HWND window = program->shown("Cobweave - Notes");
    ASSERT_NE(window, nullptr);
    // The first note is chosen, and a letter typed into its text.
    for (const WPARAM key : {VK_DOWN, VK_TAB, int{'X'}})
        PostMessageW(window, WM_KEYDOWN, key, 1);
    PostMessageW(window, WM_CLOSE, 0, 0);
    // It asks whether to save, and nobody answers.
    EXPECT_NE(program->shown("Cobweave"), nullptr);
    endSession();
    EXPECT_EQ(program->exitCode(), 0U);
    EXPECT_EQ(readFile(folder / "notes.cwv"), "buy milk\r\n\r\n");
}

TEST_F(BesideMessenger, LosesNothingThatIsStoredWhereTheEndOfTheSessionIsTooQuick) {
    start({{"initialStatus", "Busy"}});
    Relay conversation = Relay::through(port);
    (void)conversation.down(contactText("See you"));
    const auto lastWords = [this] { return stored(SettingsStore::lastWords, "bob@example.com"); };
    ASSERT_TRUE(comesTrue([&] { return !lastWords().empty(); }));
    const std::string before = lastWords();
    (void)program->answersTo(WM_QUERYENDSESSION, 0);
    program->kill();
    EXPECT_EQ(stored("Options", "initialStatus"), "Busy");
    EXPECT_EQ(lastWords(), before);
}

TEST_F(BesideMessenger, IsLeftAloneByASecondCopyWhichSaysSoInABox) {
    start({{"useristyping", "False"}});
    Relay conversation = Relay::through(port);
    const Copy second(executable);
    const HWND box = second.shown("Cobweave");
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(second.isRunning());
    PostMessageW(box, WM_CLOSE, 0, 0);
    EXPECT_EQ(second.exitCode(), 1U);
    EXPECT_EQ(conversation.up("PNG\r\n"), "PNG\r\n");
    EXPECT_EQ(Relay::through(port).up("PNG\r\n"), "PNG\r\n");
}

TEST(HiddenMessenger, IsAskedToEnd) {
    OtherProgram messenger;
    (void)messenger.open("MSNHiddenWindowClass", "");
    makeForeignWindows()->requestMessengerEnd();
    EXPECT_TRUE(comesTrue([&] { return messenger.ask("commands") == "shutdown:1"; }));
}

/// A client in one of the places where it may be installed.
class Installed {
public:
    explicit Installed(const char* programs) : folder(fs::path(programs) / "MSN Messenger") {
        fs::create_directories(folder);
        fs::copy_file(testSystem::programFile().parent_path() / "stand_in.exe", file());
    }
    ~Installed() {
        // As long as it runs it cannot be removed.
        EXPECT_TRUE(comesTrue([this] {
            std::error_code inUse;
            fs::remove_all(folder, inUse);
            return !fs::exists(folder);
        }));
    }
    Installed(const Installed&) = delete;
    Installed& operator=(const Installed&) = delete;

    [[nodiscard]] bool wasStarted() const { return fs::exists(file() += ".started"); }

private:
    [[nodiscard]] fs::path file() const { return folder / "msnmsgr.exe"; }

    fs::path folder;
};

TEST(InstalledClient, IsStartedWhereTheSystemPutsPrograms) {
    const Installed client("C:\\Program Files (x86)");
    makeClient()->start();
    EXPECT_TRUE(comesTrue([&] { return client.wasStarted(); }));
}

TEST(InstalledClient, IsStartedFromTheFirstOfBothPlaces) {
    const Installed first("C:\\Program Files");
    const Installed second("C:\\Program Files (x86)");
    makeClient()->start();
    EXPECT_TRUE(comesTrue([&] { return first.wasStarted(); }));
    EXPECT_FALSE(second.wasStarted());
}

}  // namespace

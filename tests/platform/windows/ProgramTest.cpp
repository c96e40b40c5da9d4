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
#include "tests/support/storedSettings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;

using testing::HasSubstr;

constexpr std::uint16_t port = 1090;

/// The program itself among the windows of others, as it runs in the Wine prefix of a Messenger.
class BesideMessenger : public testing::Test {
protected:
    ~BesideMessenger() override {
        if (process == nullptr) return;
        TerminateProcess(process, 0);
        EXPECT_EQ(WaitForSingleObject(process, INFINITE), WAIT_OBJECT_0);
        CloseHandle(process);
        EXPECT_TRUE(comesTrue([] { return !isServing(); }));
    }

    void start(const std::vector<std::pair<std::string, std::string>>& options) {
        ASSERT_TRUE(comesTrue([] { return !isServing(); }));
        writeSettings(folder.path(), storedOptions(options));
        const Variable settings("APPDATA", wideText::toUtf8(folder.path().wstring()));
        STARTUPINFOW how{};
        how.cb = sizeof how;
        PROCESS_INFORMATION made{};
        const fs::path file = COBWEAVE_EXECUTABLE;
        ASSERT_NE(CreateProcessW(file.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr,
                                 nullptr, &how, &made),
                  0)
            << GetLastError();
        CloseHandle(made.hThread);
        process = made.hProcess;
        number = made.dwProcessId;
        ASSERT_TRUE(comesTrue([] { return isServing(); }));
    }

    /// Of the store, as it is now.
    [[nodiscard]] std::string stored(std::string_view section, std::string_view key) const {
        SettingsStore store(storeIn(folder.path()), {});
        return store.ReadSetting(section, key);
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

    TemporaryFolder folder;
    HANDLE process = nullptr;

private:
    [[nodiscard]] static bool isServing() {
        try {
            (void)Peer::connectedTo(port);
            return true;
        } catch (const std::runtime_error&) {
            return false;
        }
    }
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

    DWORD number = 0;
};

TEST_F(BesideMessenger, GivesItsWindowTheUsersTitle) {
    OtherProgram messenger;
    const HWND first = messenger.open("msnmsblclass", "MSN Messenger");
    start({{"windowrename", "1"}, {"windowrenamecaption", "Mine"}});
    EXPECT_TRUE(comesTrue([&] { return titleOf(first) == "Mine"; }));
    messenger.ask("close " + std::to_string(fromSystem(first)));
    const HWND second = messenger.open("msnmsblclass", "MSN Messenger");
    EXPECT_TRUE(comesTrue([&] { return titleOf(second) == "Mine"; }));
}

TEST_F(BesideMessenger, SaysWhatWinampPlaysAndSteersIt) {
    PlayerStandIn player;
    player.show(PlayerStandIn::Status::Playing, "Ann", "Song");
    start({});
    Relay notification = Relay::through(port);
    (void)notification.down("USR 3 OK ann@example.com Ann%20Lee 1 0\r\n");
    Relay conversation = Relay::through(port);
    (void)conversation.down("JOI bob@example.com Bob\r\n");
    EXPECT_THAT(conversation.up(clientText("I hear <ws>")), HasSubstr("I hear Ann - Song"));
    (void)conversation.up(clientText("!winamp next"));
    EXPECT_TRUE(comesTrue([&] { return player.commands() == std::vector{40048}; }));
}

TEST_F(BesideMessenger, EndsWithTheSessionAndLeavesAStoreThatIsWhole) {
    start({{"initialStatus", "Busy"}});
    const std::vector<DWORD_PTR> answers = answersTo(WM_QUERYENDSESSION, 0);
    EXPECT_FALSE(answers.empty());
    EXPECT_THAT(answers, testing::Each(DWORD_PTR{TRUE}));
    EXPECT_EQ(WaitForSingleObject(process, 0), DWORD{WAIT_TIMEOUT});
    (void)answersTo(WM_ENDSESSION, TRUE);
    ASSERT_EQ(WaitForSingleObject(process, 20000), WAIT_OBJECT_0);
    DWORD code = 1;
    GetExitCodeProcess(process, &code);
    EXPECT_EQ(code, 0U);
    const fs::path file = storeIn(folder.path());
    EXPECT_TRUE(fs::exists(file));
    EXPECT_FALSE(fs::exists(fs::path(file) += "-wal"));
    EXPECT_EQ(stored("Options", "initialStatus"), "Busy");
}

TEST_F(BesideMessenger, LosesNothingThatIsStoredWhereTheEndOfTheSessionIsTooQuick) {
    start({{"initialStatus", "Busy"}});
    Relay conversation = Relay::through(port);
    (void)conversation.down(contactText("See you"));
    const auto lastWords = [this] { return stored(SettingsStore::lastWords, "bob@example.com"); };
    ASSERT_TRUE(comesTrue([&] { return !lastWords().empty(); }));
    const std::string before = lastWords();
    (void)answersTo(WM_QUERYENDSESSION, 0);
    TerminateProcess(process, 1);
    ASSERT_EQ(WaitForSingleObject(process, 20000), WAIT_OBJECT_0);
    EXPECT_EQ(stored("Options", "initialStatus"), "Busy");
    EXPECT_EQ(lastWords(), before);
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

#include "platform/ForeignWindows.h"
#include "platform/MediaPlayer.h"
#include "tests/platform/windows/OtherProgram.h"
#include "tests/support/comesTrue.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

using namespace std::chrono_literals;

/// A program that takes no messages any more.
class HungProgram : public testing::Test {
protected:
    HWND openHung(const std::string& className, const std::string& title) {
        const HWND window = program.open(className, title);
        program.tell("hang " + std::to_string(fromSystem(window)));
        return window;
    }

    OtherProgram program;
};

TEST_F(HungProgram, KeepsNobodyWaitingWhoTitlesIt) {
    const auto windows = makeForeignWindows();
    const auto messenger = fromSystem(openHung("msnmsblclass", "MSN Messenger"));
    ASSERT_TRUE(comesTrue([&] { return windows->MessengerWindowHandle() == messenger; }));
    const auto before = std::chrono::steady_clock::now();
    windows->SetWindowText(messenger, "another");
    // It is tried for a twentieth of that.
    EXPECT_LT(std::chrono::steady_clock::now() - before, 1s);
}

TEST_F(HungProgram, KeepsNobodyWaitingWhoListensToIt) {
    const auto player = makeMediaPlayer();
    const auto window = fromSystem(openHung("Winamp v1.x", "1. Ann - Song - Winamp"));
    ASSERT_TRUE(comesTrue([&] { return player->WinampWindow() == window; }));
    EXPECT_EQ(player->WindowTextOf(window), "1. Ann - Song - Winamp");
    player->command(window, 40045);
    EXPECT_EQ(player->WindowTextOf(window), "1. Ann - Song - Winamp");
}

TEST_F(HungProgram, IsAskedToEndWithoutWaiting) {
    const auto windows = makeForeignWindows();
    (void)openHung("MSNHiddenWindowClass", "");
    const auto before = std::chrono::steady_clock::now();
    windows->requestMessengerEnd();
    EXPECT_LT(std::chrono::steady_clock::now() - before, 10s);
}

}  // namespace

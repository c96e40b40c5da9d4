#include "platform/windows/EndSignals.h"

#include "tests/support/comesTrue.h"

#include <gtest/gtest.h>

namespace {

class EndRequest : public testing::Test {
protected:
    [[nodiscard]] testing::AssertionResult arrives() const {
        if (comesTrue([this] { return count == 1; })) return testing::AssertionSuccess();
        return testing::AssertionFailure() << "it arrived " << count << " times";
    }

    int count = 0;
    EndSignals signals{[this] { ++count; }};
    /// As a setup and the system find it.
    HWND window = ownWindow();

private:
    [[nodiscard]] static HWND ownWindow() {
        HWND found = nullptr;
        do {
            found = FindWindowExW(nullptr, found, L"CobweaveWindow", nullptr);
        } while (found != nullptr && !isOurs(found));
        return found;
    }
};

TEST_F(EndRequest, ComesFromASetup) {
    ASSERT_NE(window, nullptr);
    PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_TRUE(arrives());
    EXPECT_NE(IsWindow(window), 0);
}

TEST_F(EndRequest, ComesWithTheEndOfTheSession) {
    EXPECT_EQ(SendMessageW(window, WM_QUERYENDSESSION, 0, 0), TRUE);
    EXPECT_EQ(count, 0);
    SendMessageW(window, WM_ENDSESSION, TRUE, 0);
    EXPECT_EQ(count, 1);
}

TEST_F(EndRequest, DoesNotComeWhenTheSessionGoesOn) {
    EXPECT_EQ(SendMessageW(window, WM_QUERYENDSESSION, 0, 0), TRUE);
    SendMessageW(window, WM_ENDSESSION, FALSE, 0);
    EXPECT_EQ(count, 0);
}

TEST_F(EndRequest, ComesFromTheKeysOfAConsole) {
    FreeConsole();
    ASSERT_NE(AllocConsole(), 0) << GetLastError();
    ASSERT_NE(GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0), 0) << GetLastError();
    EXPECT_TRUE(arrives());
}

}  // namespace

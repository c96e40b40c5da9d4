#pragma once

#include "platform/ForeignWindows.h"
#include "tests/support/comesTrue.h"

#include <gtest/gtest.h>

#include <memory>

/// What the program finds of Messenger's window among those of other programs.
class FoundMessenger : public testing::Test {
protected:
    /// Starts the program's side.
    void start() {
        windows = makeForeignWindows();
        windows->changed = [this] { ++changes; };
    }
    /// The window that is found becomes this one.
    [[nodiscard]] testing::AssertionResult finds(WindowHandle window) const {
        (void)comesTrue([&] { return windows->MessengerWindowHandle() == window; });
        return isFound(window);
    }
    /// The window that is found now.
    [[nodiscard]] testing::AssertionResult isFound(WindowHandle window) const {
        if (windows->MessengerWindowHandle() == window) return testing::AssertionSuccess();
        return testing::AssertionFailure() << "found is " << windows->MessengerWindowHandle();
    }

    std::unique_ptr<ForeignWindows> windows;
    int changes = 0;
};

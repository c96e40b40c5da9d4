#include "platform/windows/WindowOfClass.h"

#include "tests/platform/windows/OtherProgram.h"
#include "tests/support/comesTrue.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// A window of the class that is looked for, and the system's events as Windows sends them.
class WindowOfTheClass : public testing::Test {
protected:
    WindowOfTheClass() {
        window.changed = [this] { ++changes; };
    }

    [[nodiscard]] HWND open() {
        const HWND opened = program.open("Winamp v1.x", "one");
        EXPECT_TRUE(comesTrue([&] { return window.handle() == opened; }));
        EXPECT_TRUE(comesTrue([&] { return changes > 0; }));
        changes = 0;
        return opened;
    }

    OtherProgram program;
    WindowOfClass window{L"Winamp v1.x"};
    int changes = 0;
};

TEST_F(WindowOfTheClass, ReportsThatItsTitleChanges) {
    const HWND opened = open();
    program.ask("title " + std::to_string(fromSystem(opened)) + "|two");
    program.announce(EVENT_OBJECT_NAMECHANGE, opened);
    EXPECT_TRUE(comesTrue([&] { return changes == 1; }));
    EXPECT_EQ(window.handle(), opened);
}

TEST_F(WindowOfTheClass, ReportsThatItGoes) {
    const HWND opened = open();
    program.ask("close " + std::to_string(fromSystem(opened)));
    program.announce(EVENT_OBJECT_DESTROY, opened);
    EXPECT_TRUE(comesTrue([&] { return changes == 1; }));
    EXPECT_EQ(window.handle(), nullptr);
}

TEST_F(WindowOfTheClass, ReportsNothingOfOtherWindows) {
    const HWND opened = open();
    const HWND other = program.open("Other", "one");
    program.announce(EVENT_OBJECT_NAMECHANGE, other);
    // In the order in which they happen.
    program.announce(EVENT_OBJECT_NAMECHANGE, opened);
    EXPECT_TRUE(comesTrue([&] { return changes > 0; }));
    EXPECT_EQ(changes, 1);
}

}  // namespace

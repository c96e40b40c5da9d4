#include "tests/platform/linux/x11/Desktop.h"

#include <vector>

namespace {

using looks::mainClass;
using looks::ofProcess;

/// Which window is Messenger's, with a window manager and without one.
class MessengerWindow : public Desktop, public testing::WithParamInterface<bool> {
protected:
    MessengerWindow() {
        if (GetParam()) manage();
    }
};

TEST_P(MessengerWindow, IsNoneOnADesktopWithoutMessenger) {
    (void)open(looks::other("MSN Messenger"));
    start();
    EXPECT_TRUE(stays(0));
}

TEST_P(MessengerWindow, IsKnownAtOnceWhenItIsThereAlready) {
    const auto window = open(mainClass("MSN Messenger"));
    start();
    EXPECT_EQ(windows->MessengerWindowHandle(), window);
}

TEST_P(MessengerWindow, IsFoundWhenItOpensAndLostWhenItCloses) {
    start();
    const auto window = open(mainClass("MSN Messenger"));
    EXPECT_TRUE(finds(window));
    EXPECT_EQ(changes, 1);
    other.close(window);
    EXPECT_TRUE(finds(0));
    EXPECT_EQ(changes, 2);
}

TEST_P(MessengerWindow, IsKnownByItsClassHoweverItIsTitled) {
    start();
    const auto window = open(mainClass("somebody - Conversation"));
    EXPECT_TRUE(finds(window));
}

TEST_P(MessengerWindow, IsKnownByEitherNameOfItsClassInAnyCase) {
    start();
    for (const StandIn::Look& look : std::vector<StandIn::Look>{{"msnmsblclass", "", "a"},
                                                                {"", "MSNMSBLClass", "a"},
                                                                {"MsnMsgr.Exe", "Wine", "a"},
                                                                {"wine", "MSNMSGR.EXE", "a"}}) {
        const auto window = open(look);
        EXPECT_TRUE(finds(window)) << look.instance << '/' << look.className;
        other.close(window);
        EXPECT_TRUE(finds(0));
    }
}

TEST_P(MessengerWindow, IsNotOneWhoseClassOnlyContainsTheName) {
    start();
    (void)open({"msnmsblclass2", "notmsnmsgr.exe", "a"});
    EXPECT_TRUE(stays(0));
}

TEST_P(MessengerWindow, IsNoConversationOfTheClientInWine) {
    start();
    (void)open(ofProcess("ann@example.com - Conversation"));
    EXPECT_TRUE(stays(0));
    const auto window = open(ofProcess("MSN Messenger"));
    EXPECT_TRUE(finds(window));
}

TEST_P(MessengerWindow, IsNoDialogOfTheClientInWine) {
    const auto owner = open(looks::other("owner"));
    start();
    StandIn::Look look = ofProcess("Options");
    look.type = "_NET_WM_WINDOW_TYPE_DIALOG";
    (void)open(look);
    look = ofProcess("Add a Contact");
    look.transientFor = owner;
    (void)open(look);
    EXPECT_TRUE(stays(0));
    look = ofProcess("MSN Messenger");
    look.type = "_NET_WM_WINDOW_TYPE_NORMAL";
    EXPECT_TRUE(finds(open(look)));
}

TEST_P(MessengerWindow, IsNotTakenForOneBeforeItHasATitle) {
    start();
    StandIn::Look untitled = ofProcess("");
    const auto conversation = open(untitled);
    untitled.title.reset();
    const auto main = open(untitled);
    EXPECT_TRUE(stays(0));
    other.setTitle(conversation, "ann@example.com - Conversation");
    EXPECT_TRUE(stays(0));
    other.setTitle(main, "MSN Messenger");
    EXPECT_TRUE(finds(main));
}

TEST_P(MessengerWindow, IsLostWhenItTurnsOutToBeAConversation) {
    start();
    const auto window = open(ofProcess("ann@example.com"));
    EXPECT_TRUE(finds(window));
    other.setTitle(window, "ann@example.com - Conversation");
    EXPECT_TRUE(finds(0));
}

TEST_P(MessengerWindow, IsFoundWhenAWindowOfTheClientTurnsOutToBeOne) {
    start();
    const auto window = open(ofProcess("x - Conversation"));
    EXPECT_TRUE(stays(0));
    other.setClass(window, "msnmsblclass", "");
    EXPECT_TRUE(finds(window));
    other.setClass(window, "xterm", "XTerm");
    EXPECT_TRUE(finds(0));
}

TEST_P(MessengerWindow, IsTheTrackedOneWhileItStands) {
    start();
    const auto first = open(ofProcess("Signing in"));
    EXPECT_TRUE(finds(first));
    const auto second = open(mainClass("MSN Messenger"));
    EXPECT_TRUE(stays(first));
    EXPECT_EQ(changes, 1);
    other.close(first);
    EXPECT_TRUE(finds(second));
}

TEST_P(MessengerWindow, IsAmongSeveralTheOneOfTheOldClass) {
    (void)open(ofProcess("MSN Messenger"));
    const auto window = open(mainClass("x"));
    start();
    EXPECT_TRUE(stays(window));
}

TEST_P(MessengerWindow, IsAmongSeveralOfTheProcessTheOneTitledMSNMessenger) {
    (void)open(ofProcess("Contact card"));
    const auto window = open(ofProcess("MSN Messenger"));
    (void)open(ofProcess("Games"));
    start();
    EXPECT_TRUE(stays(window));
}

TEST_P(MessengerWindow, IsElseTheFirstThatOpened) {
    const auto window = open(ofProcess("One"));
    (void)open(ofProcess("Two"));
    start();
    EXPECT_TRUE(stays(window));
}

TEST_P(MessengerWindow, IsNoneWhileItIsHiddenAndIsFoundAgain) {
    const auto window = open(ofProcess("MSN Messenger"));
    start();
    EXPECT_TRUE(stays(window));
    hide(window);
    EXPECT_TRUE(finds(0));
    other.show(window);
    EXPECT_TRUE(finds(window));
    EXPECT_EQ(changes, 2);
}

TEST_P(MessengerWindow, KeepsItsPlaceWhateverIsWrittenAsItsTitle) {
    const auto window = open(ofProcess("MSN Messenger"));
    start();
    for (const char* const title : {"me - Conversation", "", "MSN Messenger"}) {
        windows->SetWindowText(window, title);
        ASSERT_TRUE(becomesTrue([&] { return other.bytes(window, "_NET_WM_NAME") == title; }));
        EXPECT_TRUE(stays(window)) << title;
    }
    EXPECT_EQ(changes, 0);
}

TEST_P(MessengerWindow, IsFoundAfterARestartByTheTitleThatWasWrittenBefore) {
    const auto window = open(ofProcess("MSN Messenger"));
    start();
    for (const char* const title : {"me - Conversation", "", "Mine"}) {
        windows->SetWindowText(window, title);
        ASSERT_TRUE(becomesTrue([&] { return other.bytes(window, "_NET_WM_NAME") == title; }));
        windows.reset();
        const auto another = open(ofProcess("Another"));
        start();
        EXPECT_TRUE(stays(window)) << title;
        other.close(another);
    }
}

TEST_P(MessengerWindow, IsFoundAmongThreeHundredOthers) {
    for (int count = 0; count < 150; ++count)
        (void)other.open(looks::other("other"));
    const auto window = open(ofProcess("MSN Messenger"));
    for (int count = 0; count < 150; ++count)
        (void)other.open(looks::other("other"));
    start();
    EXPECT_TRUE(finds(window));
}

TEST_P(MessengerWindow, IsFoundWhileWindowsComeAndGoAllTheTime) {
    start();
    xcb_window_t window = 0;
    for (int count = 0; count < 200; ++count) {
        const auto brief = other.open(count % 2 == 0 ? ofProcess("Brief") : looks::other("Brief"));
        if (count == 100) window = other.open(mainClass("MSN Messenger"));
        QCoreApplication::processEvents();
        other.close(brief);
    }
    EXPECT_TRUE(finds(window));
    other.close(window);
    EXPECT_TRUE(finds(0));
}

INSTANTIATE_TEST_SUITE_P(Table, MessengerWindow, testing::Bool(), [](const auto& info) {
    return info.param ? "WithAWindowManager" : "WithoutAWindowManager";
});

}  // namespace

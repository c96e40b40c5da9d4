#include "tests/ui/options/OptionsFixture.h"
#include "ui/help/frmhelp.h"

namespace {

constexpr const char* refusal = "critical: Please select some settings before running Cobweave";
constexpr const char* signOut =
    "information: You are about to be signed out of MSN Messenger.\r\n\r\n"
    "Please click \"OK\" once you are fully signed out of MSN Messenger.";
constexpr const char* offer =
    "question: This is your first time using Cobweave.\r\n\r\n"
    "Would you like to view the help dialog to understand \r\nall of Cobweave's Features?";

/// The window that opens by itself, and stays until OK.
using OptionsFirstRun = OptionsFixture;

TEST_F(OptionsFirstRun, CannotBeClosedBeforeOk) {
    openFirst();
    pressCancel();
    EXPECT_EQ(calls, std::vector<std::string>{refusal});
    ASSERT_NE(shown(), nullptr);
    EXPECT_FALSE(window().close());
    EXPECT_EQ(calls, (std::vector<std::string>{refusal, refusal}));
    ASSERT_NE(shown(), nullptr);
    EXPECT_EQ(stored("useristyping"), "(none)");
}

TEST_F(OptionsFirstRun, OkRefusesToCloseThenStartsTheClientAgainAndOffersHelp) {
    openFirst();
    pressOk();
    EXPECT_EQ(calls,
              (std::vector<std::string>{refusal, "end 77", signOut, "start the client", offer}));
    EXPECT_NE(shown(), nullptr);
}

TEST_F(OptionsFirstRun, OkUnderItsOwnBoxesDoesNothing) {
    boxes.opened = [this](const std::string& box) {
        calls.push_back(box);
        pressOk();
    };
    openFirst();
    pressOk();
    EXPECT_EQ(calls,
              (std::vector<std::string>{refusal, "end 77", signOut, "start the client", offer}));
}

TEST_F(OptionsFirstRun, HelpIsShownOnYes) {
    boxes.answers = {true};
    openFirst();
    pressOk();
    EXPECT_EQ(calls.back(), "show the help");
    EXPECT_NE(shown(), nullptr);
}

TEST_F(OptionsFirstRun, GoesOnWithoutAClient) {
    windows.messenger = 0;
    openFirst();
    pressOk();
    EXPECT_EQ(calls,
              (std::vector<std::string>{refusal, "end 0", signOut, "start the client", offer}));
}

TEST_F(OptionsFirstRun, DoesNotStartTheClientWhenTheProgramEndsInsteadOfTheAnswer) {
    boxes.endsAt = "information";
    openFirst();
    pressOk();
    EXPECT_EQ(calls, (std::vector<std::string>{refusal, "end 77", signOut}));
}

TEST_F(OptionsFirstRun, LeavesTheClientAloneWhenTheProgramEndsUnderTheRefusal) {
    boxes.endsAt = "critical";
    openFirst();
    pressOk();
    EXPECT_EQ(calls, std::vector<std::string>{refusal});
}

TEST_F(OptionsFirstRun, AllIsWrittenBeforeAnyBoxComes) {
    std::vector<std::string> under;
    boxes.opened = [&](const std::string&) {
        under.push_back(stored("useristyping") + stored("tscolor"));
    };
    openFirst();
    pressOk();
    EXPECT_EQ(under, (std::vector<std::string>(3, "Falsered")));
    EXPECT_EQ(stored("constants"), "False");
}

TEST_F(OptionsFirstRun, TheWindowClosesInTheOrdinaryWayAfterwards) {
    for (const bool byOk : {true, false}) {
        openFirst();
        pressOk();
        calls.clear();
        byOk ? pressOk() : pressCancel();
        EXPECT_EQ(shown(), nullptr);
        EXPECT_TRUE(calls.empty());
    }
}

TEST_F(OptionsFirstRun, AStatusThatIsNoneIsRefusedAndTheRunStaysTheFirst) {
    openFirst();
    status().setEditText("Sleeping");
    pressOk();
    EXPECT_EQ(calls, std::vector<std::string>{"critical: Please select an inital sign in status."});
    calls.clear();
    pressCancel();
    EXPECT_EQ(calls, std::vector<std::string>{refusal});
    EXPECT_NE(shown(), nullptr);
}

TEST_F(OptionsFirstRun, IsOverForTheNextWindow) {
    openFirst();
    pressOk();
    pressCancel();
    options->Show();
    pressCancel();
    EXPECT_EQ(shown(), nullptr);
}

/// The same with the boxes that users get.
class OptionsFirstRunBoxes : public OptionsFirstRun {
protected:
    std::unique_ptr<MessageBox> realBoxes = makeMessageBox();
    FormHolder<frmhelp> realHelp{FormLife::UntilClosed};
    OptionsFirstRunBoxes() {
        messageBox = realBoxes.get();
        showHelp = [this] { realHelp.Show(); };
    }
};

TEST_F(OptionsFirstRunBoxes, AreAnsweredByTheirRealButtons) {
    openFirst();
    Answers answers({QMessageBox::Ok, QMessageBox::Ok, QMessageBox::Yes});
    pressOk();
    ASSERT_TRUE(answers.areGiven());
    EXPECT_EQ(answers.boxes[0].icon, QMessageBox::Critical);
    EXPECT_EQ(answers.boxes[1].icon, QMessageBox::Information);
    EXPECT_EQ(answers.boxes[2].icon, QMessageBox::Question);
    EXPECT_EQ(answers.boxes[2].buttons, QMessageBox::Yes | QMessageBox::No);
    for (const auto& box : answers.boxes)
        EXPECT_EQ(box.title, "Cobweave");
    EXPECT_EQ(calls, (std::vector<std::string>{"end 77", "start the client"}));
    // Both windows stand, and either can be closed.
    QWidget* const helpWindow = windowOf("Cobweave - Help");
    ASSERT_NE(helpWindow, nullptr);
    EXPECT_FALSE(helpWindow->isModal());
    EXPECT_TRUE(helpWindow->close());
    pressCancel();
    EXPECT_EQ(shown(), nullptr);
}

TEST_F(OptionsFirstRunBoxes, TheMenuUnderAnOpenBoxBreaksNothing) {
    openFirst();
    Answers answers({QMessageBox::Ok, QMessageBox::Ok, QMessageBox::No});
    int rounds = 0;
    answers.meanwhile = [&] {
        ++rounds;
        options->Show();
        realHelp.Show();
        QCoreApplication::processEvents();
        EXPECT_EQ(countOf("Cobweave - Options"), 1);
        // The box is what the user has to answer, still.
        EXPECT_NE(qobject_cast<QMessageBox*>(QApplication::activeModalWidget()), nullptr);
    };
    pressOk();
    EXPECT_TRUE(answers.areGiven());
    EXPECT_EQ(rounds, 3);
    EXPECT_EQ(calls, (std::vector<std::string>{"end 77", "start the client"}));
    EXPECT_NE(shown(), nullptr);
    pressCancel();
    EXPECT_EQ(shown(), nullptr);
}

TEST_F(OptionsFirstRunBoxes, AMenuThatOpensTheWindowBringsItsBoxToTheFront) {
    openFirst();
    realHelp.Show();
    Answers answers({QMessageBox::Ok});
    answers.meanwhile = [&] {
        realHelp.Show();
        EXPECT_TRUE(
            comesTrue([] { return QApplication::activeWindow() == windowOf("Cobweave - Help"); }));
        options->Show();
        EXPECT_TRUE(comesTrue(
            [] { return qobject_cast<QMessageBox*>(QApplication::activeWindow()) != nullptr; }));
    };
    EXPECT_FALSE(window().close());
    EXPECT_TRUE(answers.areGiven());
}

}  // namespace

#include "tests/support/FakeDesktop.h"
#include "tests/support/FakeFacilities.h"
#include "tests/support/readFile.h"
#include "ui/common/FormHolder.h"
#include "ui/notes/frmnotes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto saveQuestion = "question: Do you want to save changes to your current note?";
constexpr auto removeQuestion = "question: Are you sure you want to remove this note?";

class NotesWindow : public testing::Test {
protected:
    FakeFacilities facilities;
    NotesStore& store = facilities.notes;
    FakeMessageBox boxes;
    FormHolder<frmnotes> holder{FormLife::WholeRun,
                                [this] { return std::make_unique<frmnotes>(store, boxes); }};

    frmnotes& show() {
        holder.Show();
        return holder.load();
    }
    frmnotes& showWith(const std::vector<std::string>& notes) {
        for (const std::string& note : notes)
            store.add(note);
        return show();
    }
    template <typename Control>
    static Control& control(frmnotes& form, const char* name) {
        return *form.findChild<Control*>(name);
    }
    static NoteList& list(frmnotes& form) { return *static_cast<NoteList*>(listOf(form)); }
    static QListWidget* listOf(frmnotes& form) { return form.findChild<QListWidget*>("List1"); }
    static QPlainTextEdit& text(frmnotes& form) { return control<QPlainTextEdit>(form, "Text1"); }
    static void click(frmnotes& form, int row) {
        QListWidget& entries = *listOf(form);
        const QRect place = entries.visualItemRect(entries.item(row));
        QTest::mouseClick(entries.viewport(), Qt::LeftButton, {}, place.center());
    }
    static void press(frmnotes& form, const char* name) {
        QTest::mouseClick(&control<QPushButton>(form, name), Qt::LeftButton);
    }
    static std::vector<std::string> entries(frmnotes& form) {
        std::vector<std::string> texts;
        for (int row = 0; row < listOf(form)->count(); ++row) {
            texts.push_back(listOf(form)->item(row)->text().toStdString());
        }
        return texts;
    }
    [[nodiscard]] std::string file() const {
        return readFile(facilities.folder.path() / "notes.cwv");
    }
};

TEST_F(NotesWindow, HasItsCaptions) {
    frmnotes& form = show();
    EXPECT_EQ(form.windowTitle(), "Cobweave - Notes");
    EXPECT_EQ(control<QPushButton>(form, "Command1").text(), "&Save Changes");
    EXPECT_EQ(control<QPushButton>(form, "Command2").text(), "&Remove Note");
    EXPECT_EQ(control<QPushButton>(form, "Command3").text(), "&Close");
    QStringList frames;
    for (const QGroupBox* const frame : form.findChildren<QGroupBox*>())
        frames << frame->title();
    EXPECT_EQ(frames, QStringList({"Select A Note", "Edit/Delete/View Note"}));
}

TEST_F(NotesWindow, ShowsTheNotesInTheirOrder) {
    EXPECT_THAT(entries(showWith({"zebra", "ant", "call\r\nhome"})),
                ElementsAre("zebra", "ant", "call home"));
}

TEST_F(NotesWindow, TheTextIsDisabledUntilANoteIsSelected) {
    frmnotes& form = showWith({"one"});
    EXPECT_FALSE(text(form).isEnabled());
    click(form, 0);
    EXPECT_TRUE(text(form).isEnabled());
    EXPECT_EQ(text(form).toPlainText(), "one");
}

TEST_F(NotesWindow, TheKeyboardSelectsToo) {
    frmnotes& form = showWith({"one", "two"});
    listOf(form)->setFocus();
    QTest::keyClick(listOf(form), Qt::Key_Down);
    EXPECT_EQ(text(form).toPlainText(), "one");
    QTest::keyClick(listOf(form), Qt::Key_Down);
    EXPECT_EQ(text(form).toPlainText(), "two");
    QTest::keyClick(listOf(form), Qt::Key_Up);
    EXPECT_EQ(text(form).toPlainText(), "one");
}

TEST_F(NotesWindow, AnEditedNoteMovesToTheEnd) {
    frmnotes& form = showWith({"one", "two"});
    click(form, 0);
    QTest::keyClicks(&text(form), "new ");
    press(form, "Command1");
    EXPECT_THAT(store.list(), ElementsAre("two", "new one"));
    EXPECT_THAT(entries(form), ElementsAre("two", "new one"));
    EXPECT_EQ(file(), "two\r\nnew one\r\n\r\n");
    EXPECT_EQ(text(form).toPlainText(), "");
    EXPECT_FALSE(text(form).isEnabled());
    EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(NotesWindow, SavingWithoutTypingStillMovesTheNote) {
    frmnotes& form = showWith({"one", "two"});
    click(form, 0);
    press(form, "Command1");
    EXPECT_THAT(store.list(), ElementsAre("two", "one"));
}

TEST_F(NotesWindow, ALineBreakIsTypedAsOneOfTheFile) {
    frmnotes& form = showWith({"one"});
    click(form, 0);
    QTest::keyClick(&text(form), Qt::Key_End);
    QTest::keyClick(&text(form), Qt::Key_Return);
    QTest::keyClicks(&text(form), "two");
    press(form, "Command1");
    EXPECT_THAT(store.list(), ElementsAre("one\r\ntwo"));
}

TEST_F(NotesWindow, SavingKeepsEveryByteOfANote) {
    std::string note;
    for (int code = 1; code < 256; ++code)
        note += static_cast<char>(code);
    note += '\0';
    note += "\r\n\n\r";
    frmnotes& form = showWith({note});
    click(form, 0);
    press(form, "Command1");
    ASSERT_EQ(store.list().size(), 1U);
    EXPECT_EQ(store.list().front(), note);
}

constexpr const char* scripts =
    "Zo\u00EB \u0159 \u041F\u0440\u0438 \u0645\u0631\u062D \u05E9\u05DC \u4F60\u597D \U0001F600";

TEST_F(NotesWindow, TheFirstRowLooksAsTheOthersUntilItIsChosen) {
    frmnotes& form = showWith({"same", "same"});
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    listOf(form)->setFocus();
    ASSERT_TRUE(listOf(form)->currentIndex().isValid());
    const auto row = [&](int number) {
        return listOf(form)
            ->viewport()
            ->grab(listOf(form)->visualItemRect(listOf(form)->item(number)))
            .toImage();
    };
    EXPECT_EQ(row(0), row(1));
    click(form, 0);
    EXPECT_NE(row(0), row(1));
}

TEST_F(NotesWindow, ShowsNotesOfAllScripts) {
    frmnotes& form = showWith({scripts, "Zo\xEB"});
    EXPECT_THAT(entries(form), ElementsAre(scripts, "Zo\u00EB"));
    click(form, 0);
    EXPECT_EQ(text(form).toPlainText(), scripts);
}

TEST_F(NotesWindow, KeepsWhatIsTypedInAllScripts) {
    frmnotes& form = showWith({"one"});
    click(form, 0);
    text(form).setPlainText(scripts);
    press(form, "Command1");
    EXPECT_THAT(store.list(), ElementsAre(scripts));
    EXPECT_EQ(file(), scripts + std::string("\r\n\r\n"));
}

TEST_F(NotesWindow, TypesOldFilesOnInTheirCodePage) {
    frmnotes& form = showWith({"caf\xE9"});
    click(form, 0);
    QTest::keyClicks(&text(form), "x");
    press(form, "Command1");
    EXPECT_THAT(store.list(), ElementsAre("xcaf\xE9"));
}

TEST_F(NotesWindow, KeepsTheBytesOfANoteThatNobodyHasChanged) {
    frmnotes& form = showWith({"caf\u00E9"});
    click(form, 0);
    press(form, "Command1");
    EXPECT_THAT(store.list(), ElementsAre("caf\u00E9"));
}

TEST_F(NotesWindow, SaveAndRemoveNeedASelection) {
    frmnotes& form = showWith({"one"});
    press(form, "Command1");
    press(form, "Command2");
    EXPECT_THAT(boxes.shown, ElementsAre("exclamation: Please select a note to edit.",
                                         "exclamation: Please select a note to remove."));
    EXPECT_THAT(store.list(), ElementsAre("one"));
    EXPECT_EQ(file(), "");
}

TEST_F(NotesWindow, ANoteIsRemovedAfterAYes) {
    frmnotes& form = showWith({"one", "two"});
    click(form, 0);
    press(form, "Command2");
    EXPECT_THAT(boxes.shown, ElementsAre(removeQuestion));
    EXPECT_THAT(store.list(), ElementsAre("one", "two"));
    boxes.answers = {true};
    press(form, "Command2");
    EXPECT_THAT(store.list(), ElementsAre("two"));
    EXPECT_THAT(entries(form), ElementsAre("two"));
    EXPECT_EQ(file(), "two\r\n\r\n");
    EXPECT_EQ(text(form).toPlainText(), "");
    EXPECT_FALSE(text(form).isEnabled());
}

TEST_F(NotesWindow, AnotherClickAsksForWhatWasTyped) {
    frmnotes& form = showWith({"one", "two", "three"});
    click(form, 0);
    QTest::keyClicks(&text(form), "x");
    boxes.answers = {true};
    click(form, 1);
    EXPECT_THAT(boxes.shown, ElementsAre(saveQuestion));
    EXPECT_THAT(store.list(), ElementsAre("two", "three", "xone"));
    EXPECT_EQ(text(form).toPlainText(), "two");
    EXPECT_TRUE(text(form).isEnabled());
    press(form, "Command1");
    EXPECT_THAT(store.list(), ElementsAre("three", "xone", "two"));
}

TEST_F(NotesWindow, ANoForgetsWhatWasTyped) {
    frmnotes& form = showWith({"one", "two"});
    click(form, 0);
    QTest::keyClicks(&text(form), "x");
    click(form, 1);
    click(form, 0);
    EXPECT_THAT(boxes.shown, ElementsAre(saveQuestion));
    EXPECT_EQ(text(form).toPlainText(), "one");
}

TEST_F(NotesWindow, AClickOnTheSameNoteAsksToo) {
    frmnotes& form = showWith({"one", "two"});
    click(form, 0);
    QTest::keyClicks(&text(form), "x");
    boxes.answers = {true};
    click(form, 0);
    EXPECT_THAT(store.list(), ElementsAre("two", "xone"));
    EXPECT_EQ(text(form).toPlainText(), "");
    EXPECT_FALSE(text(form).isEnabled());
}

TEST_F(NotesWindow, AnyKeyCountsAsAChangeAndPastingByMouseDoesNot) {
    frmnotes& form = showWith({"one", "two"});
    click(form, 0);
    text(form).insertPlainText("pasted");
    click(form, 1);
    EXPECT_THAT(boxes.shown, IsEmpty());
    QTest::keyClick(&text(form), Qt::Key_Left);
    click(form, 0);
    EXPECT_THAT(boxes.shown, ElementsAre(saveQuestion));
}

TEST_F(NotesWindow, AComposedLetterCountsAsAChange) {
    frmnotes& form = showWith({"one", "two"});
    click(form, 0);
    QInputMethodEvent composed;
    composed.setCommitString("\u00E9");
    QApplication::sendEvent(&text(form), &composed);
    EXPECT_EQ(text(form).toPlainText(), "\u00E9one");
    click(form, 1);
    EXPECT_THAT(boxes.shown, ElementsAre(saveQuestion));
}

TEST_F(NotesWindow, GoingOnToTheNextControlIsNoChange) {
    frmnotes& form = showWith({"one", "two"});
    click(form, 0);
    text(form).setFocus();
    QTest::keyClick(&text(form), Qt::Key_Tab);
    QTest::keyClick(&text(form), Qt::Key_Backtab, Qt::ShiftModifier);
    click(form, 1);
    EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(NotesWindow, TheRoomBelowTheNotesIsNoChoice) {
    frmnotes& form = showWith({"one", "two"});
    click(form, 0);
    QTest::keyClicks(&text(form), "x");
    const QWidget& room = *listOf(form)->viewport();
    QTest::mouseClick(listOf(form)->viewport(), Qt::LeftButton, {}, room.rect().bottomLeft());
    const QRect first = listOf(form)->visualItemRect(listOf(form)->item(0));
    EXPECT_EQ(list(form).selectedRow(), 0);
    EXPECT_EQ(text(form).toPlainText(), "xone");
    EXPECT_THAT(boxes.shown, IsEmpty());
    QTest::mouseClick(listOf(form)->viewport(), Qt::LeftButton, Qt::ControlModifier,
                      first.center());
    EXPECT_EQ(list(form).selectedRow(), 0);
}

TEST_F(NotesWindow, AfterARemovalUnsavedTypingIsWrittenOverTheNextNote) {
    frmnotes& form = showWith({"one", "two", "three"});
    click(form, 0);
    QTest::keyClicks(&text(form), "x");
    boxes.answers = {true, true};
    press(form, "Command2");
    EXPECT_THAT(store.list(), ElementsAre("two", "three"));
    click(form, 1);
    EXPECT_THAT(boxes.shown, ElementsAre(removeQuestion, saveQuestion));
    EXPECT_THAT(store.list(), ElementsAre("three", ""));
    EXPECT_EQ(text(form).toPlainText(), "three");
}

TEST_F(NotesWindow, AfterTheRemovalOfTheLastNoteThereIsNothingToWriteOver) {
    frmnotes& form = showWith({"one", "two"});
    click(form, 1);
    QTest::keyClicks(&text(form), "x");
    boxes.answers = {true, true};
    press(form, "Command2");
    click(form, 0);
    EXPECT_THAT(store.list(), ElementsAre("one"));
    EXPECT_EQ(text(form).toPlainText(), "one");
}

TEST_F(NotesWindow, ANoteByCommandIsAddedAndLeavesTheBoxAlone) {
    frmnotes& form = showWith({"one"});
    click(form, 0);
    QTest::keyClicks(&text(form), "x");
    store.add("by command");
    EXPECT_THAT(entries(form), ElementsAre("one", "by command"));
    EXPECT_EQ(text(form).toPlainText(), "xone");
    EXPECT_TRUE(text(form).isEnabled());
    press(form, "Command1");
    EXPECT_THAT(store.list(), ElementsAre("by command", "xone"));
}

TEST_F(NotesWindow, ANoteByCommandUnderAQuestionIsKept) {
    frmnotes& form = showWith({"one", "two"});
    click(form, 0);
    boxes.answers = {true};
    boxes.opened = [&](const std::string&) { store.add("meanwhile"); };
    press(form, "Command2");
    EXPECT_THAT(store.list(), ElementsAre("two", "meanwhile"));
    EXPECT_THAT(entries(form), ElementsAre("two", "meanwhile"));
}

TEST_F(NotesWindow, EveryWayOfClosingHidesItAndSaves) {
    const std::function<void(frmnotes&)> ways[] = {
        [](frmnotes& form) { press(form, "Command3"); },
        [](frmnotes& form) { form.close(); },
        [](frmnotes& form) { QTest::keyClick(&form, Qt::Key_Escape); },
        [](frmnotes& form) { QTest::keyClick(&text(form), Qt::Key_Escape); },
    };
    int number = 0;
    for (const auto& close : ways) {
        frmnotes& form = showWith({"note " + std::to_string(++number)});
        close(form);
        EXPECT_FALSE(form.isVisible());
        EXPECT_TRUE(file().ends_with("note " + std::to_string(number) + "\r\n\r\n"));
    }
    EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(NotesWindow, ClosingAsksForWhatWasTyped) {
    frmnotes& form = showWith({"one"});
    click(form, 0);
    QTest::keyClicks(&text(form), "x");
    boxes.answers = {true};
    form.close();
    EXPECT_THAT(boxes.shown, ElementsAre(saveQuestion));
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(file(), "xone\r\n\r\n");
}

TEST_F(NotesWindow, ClosingWithANoKeepsTextAndFlag) {
    frmnotes& form = showWith({"one"});
    click(form, 0);
    QTest::keyClicks(&text(form), "x");
    form.close();
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(file(), "one\r\n\r\n");
    EXPECT_EQ(text(show()).toPlainText(), "xone");
    form.close();
    EXPECT_THAT(boxes.shown, ElementsAre(saveQuestion, saveQuestion));
}

TEST_F(NotesWindow, AKeyboardAloneIsEnough) {
    frmnotes& form = showWith({"one", "two"});
    form.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    listOf(form)->setFocus();
    QTest::keyClick(listOf(form), Qt::Key_Down);
    QTest::keyClick(listOf(form), Qt::Key_Down);
    QTest::keyClick(listOf(form), Qt::Key_Tab);
    EXPECT_TRUE(text(form).hasFocus());
    QTest::keyClicks(&text(form), "x");
    QTest::keyClick(&text(form), Qt::Key_S, Qt::AltModifier);
    // A mnemonic lets its button be seen going down first.
    EXPECT_TRUE(QTest::qWaitFor([&] { return store.list().back() == "xtwo"; }));
    QTest::keyClick(&form, Qt::Key_C, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !form.isVisible(); }));
    EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(NotesWindow, AHugeNoteIsShownAndKept) {
    const std::string note(100'000, 'x');
    frmnotes& form = showWith({note});
    click(form, 0);
    press(form, "Command1");
    EXPECT_THAT(store.list(), ElementsAre(note));
}

}  // namespace

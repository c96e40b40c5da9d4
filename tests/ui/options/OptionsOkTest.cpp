#include "tests/ui/options/OptionsFixture.h"

#include <QClipboard>

#include <map>

namespace {

/// What OK writes, and when it does not.
using OptionsOk = OptionsFixture;

using Rows = std::map<std::string, std::string>;

const Rows defaults{{"initialStatus", "Online"},
                    {"useristyping", "False"},
                    {"alertoffline", "False"},
                    {"alertopenwindow", "False"},
                    {"alertclosewindow", "False"},
                    {"alertjoinwindow", "False"},
                    {"constants", "False"},
                    {"timestamp", "False"},
                    {"callby", "e"},
                    {"preventtypo", "False"},
                    {"progress", "0"},
                    {"messengerwindow", "0"},
                    {"trayicon", "0"},
                    {"lastthing", "False"},
                    {"tsprefix", "["},
                    {"tspostfix", "]"},
                    {"tscolor", "red"}};

class OptionsRows : public OptionsFixture {
protected:
    [[nodiscard]] Rows rows() const {
        Rows found;
        for (const auto& [key, value] : defaults)
            found[key] = stored(key.c_str());
        return found;
    }
    [[nodiscard]] static Rows with(const Rows& changes) {
        Rows all = defaults;
        for (const auto& [key, value] : changes)
            all[key] = value;
        return all;
    }
};

TEST_F(OptionsRows, AreAllWrittenByAFirstOkWithTheDefaults) {
    open();
    pressOk();
    EXPECT_EQ(shown(), nullptr);
    EXPECT_EQ(rows(), defaults);
    // These are the title's own, which it writes at each start.
    EXPECT_EQ(stored("windowrename"), "0");
    EXPECT_EQ(stored("windowrenamecaption"), "MSN Messenger");
}

TEST_F(OptionsRows, AreWrittenInTheirOrder) {
    open();
    pressOk();
    const Database file(facilities.folder.path() / "settings.db");
    const auto order = file.query(
        "SELECT group_concat(key, ' ') FROM (SELECT key FROM settings WHERE section = 'Options' "
        "AND key NOT LIKE 'windowrename%' ORDER BY rowid)");
    EXPECT_EQ(order.value_or(""),
              "initialStatus useristyping alertoffline alertopenwindow alertclosewindow "
              "alertjoinwindow constants timestamp callby preventtypo progress messengerwindow "
              "trayicon lastthing tsprefix tspostfix tscolor");
}

TEST_F(OptionsRows, FollowEveryControl) {
    facilities.registry.hasAddOn = true;
    open();
    for (const char* const name : {"Label1", "Label21", "Label6", "Label12"})
        click(toggle(name));
    click(the<QRadioButton>("fn"));
    goTo(1);
    status().setCurrentText("Appear Offline");
    for (const char* const name : {"Check1", "mw", "ti"})
        click(check(name));
    goTo(2);
    click(check("Check2"));
    box("prefix").clear();
    QTest::keyClicks(&box("prefix"), "<");
    box("postfix").clear();
    QTest::keyClicks(&box("postfix"), ">");
    click(the<QRadioButton>("black"));
    goTo(4);
    for (const char* const name : {"Label2", "Label3", "Label4", "Label15"})
        click(toggle(name));
    pressOk();
    Rows all;
    for (const auto& [key, value] : defaults)
        all[key] = value == "False" ? "True" : value == "0" ? "1" : value;
    all["initialStatus"] = "Appear Offline";
    all["callby"] = "fn";
    all["tsprefix"] = "<";
    all["tspostfix"] = ">";
    all["tscolor"] = "black";
    EXPECT_EQ(rows(), all);
}

TEST_F(OptionsRows, ComeBackInTheNextWindowAsTheyWereWritten) {
    open();
    click(toggle("Label6"));
    goTo(1);
    status().setCurrentText("Away");
    pressOk();
    options->Show();
    EXPECT_TRUE(toggle("Label6").isOn());
    EXPECT_EQ(status().currentText(), "Away");
    click(toggle("Label6"));
    pressOk();
    EXPECT_EQ(rows(), with({{"initialStatus", "Away"}}));
}

TEST_F(OptionsRows, KeepATickThatIsGrey) {
    open();
    goTo(1);
    click(check("Check1"));
    click(check("ti"));
    click(check("Check1"));
    pressOk();
    EXPECT_EQ(rows(), with({{"trayicon", "1"}}));
}

TEST_F(OptionsRows, HaveTheColorThatIsSelectedThoughItIsHidden) {
    set("tscolor", "black");
    open();
    pressOk();
    EXPECT_EQ(rows(), with({{"tscolor", "black"}}));
}

TEST_F(OptionsRows, HaveBothBracketsAnewWhereOneIsMissing) {
    for (const char* const missing : {"prefix", "postfix"}) {
        open();
        goTo(2);
        box("prefix").setText("{");
        box("postfix").setText("}");
        box(missing).clear();
        pressOk();
        EXPECT_EQ(rows(), defaults) << missing;
    }
}

TEST_F(OptionsRows, HaveALonePostfixBesideADefaultPrefixReplaced) {
    set("tspostfix", "}");
    open();
    goTo(2);
    EXPECT_EQ(box("postfix").text(), "]");
    pressCancel();
    set("tsprefix", "{");
    set("tspostfix", "");
    open();
    goTo(2);
    EXPECT_EQ(box("prefix").text(), "{");
    EXPECT_EQ(box("postfix").text(), "");
    pressOk();
    EXPECT_EQ(rows(), defaults);
}

TEST_F(OptionsOk, RefusesAStatusThatIsNoneAndWritesNothing) {
    for (const char* const text : {"Sleeping", "online", "Online ", ""}) {
        open();
        goTo(1);
        QApplication::clipboard()->setText(text);
        status().lineEdit()->selectAll();
        status().lineEdit()->del();
        status().lineEdit()->paste();
        goTo(2);
        box("prefix").clear();
        calls.clear();
        pressOk();
        EXPECT_EQ(calls,
                  std::vector<std::string>{"critical: Please select an inital sign in status."})
            << text;
        ASSERT_NE(shown(), nullptr);
        EXPECT_EQ(stored("useristyping"), "(none)");
        EXPECT_EQ(box("prefix").text(), "[");
        pressCancel();
        EXPECT_EQ(shown(), nullptr);
    }
}

TEST_F(OptionsOk, ShowsItsRefusalInARealBox) {
    const auto realBoxes = makeMessageBox();
    messageBox = realBoxes.get();
    open();
    status().setEditText("Sleeping");
    Answers answers({QMessageBox::Ok});
    pressOk();
    ASSERT_TRUE(answers.areGiven());
    EXPECT_EQ(answers.boxes[0].text, "Please select an inital sign in status.");
    EXPECT_EQ(answers.boxes[0].icon, QMessageBox::Critical);
    EXPECT_EQ(answers.boxes[0].title, "Cobweave");
    EXPECT_EQ(answers.boxes[0].buttons, QMessageBox::Ok);
    EXPECT_NE(shown(), nullptr);
    pressCancel();
}

TEST_F(OptionsOk, ClosesAndStartsNothingOnAnyRunButTheFirst) {
    open();
    pressOk();
    EXPECT_EQ(shown(), nullptr);
    EXPECT_TRUE(calls.empty());
}

TEST_F(OptionsOk, CancelWritesNothing) {
    open();
    click(toggle("Label1"));
    pressCancel();
    EXPECT_EQ(shown(), nullptr);
    EXPECT_EQ(stored("useristyping"), "(none)");
    EXPECT_TRUE(calls.empty());
}

TEST_F(OptionsOk, IsPressedByTheEnterKeyWhereTheKeyboardIs) {
    open();
    the<QPushButton>("Command2").setFocus();
    QTest::keyClick(&the<QPushButton>("Command2"), Qt::Key_Return);
    EXPECT_EQ(shown(), nullptr);
    EXPECT_EQ(stored("useristyping"), "False");
}

TEST_F(OptionsOk, IsPressedByItsLetter) {
    open();
    QTest::keyClick(&window(), Qt::Key_O, Qt::AltModifier);
    EXPECT_TRUE(comesTrue([] { return shown() == nullptr; }));
    EXPECT_EQ(stored("useristyping"), "False");
}

}  // namespace

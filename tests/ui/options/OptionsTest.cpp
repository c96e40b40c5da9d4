#include "tests/ui/contrast.h"
#include "tests/ui/options/OptionsFixture.h"

#include <QAccessible>
#include <QFrame>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QScreen>
#include <QTextDocument>
#include <QToolTip>

namespace {

/// The window as it opens, what its controls do, and that none of it is kept before OK.
using OptionsWindow = OptionsFixture;

constexpr const char* toggleNames[] = {"Label1", "Label21", "Label6", "Label12",
                                       "Label2", "Label3",  "Label4", "Label15"};

[[nodiscard]] QColor colorOf(const Toggle& toggle) {
    return toggle.palette().color(QPalette::WindowText);
}

TEST_F(OptionsWindow, ShowsWhatAFirstRunHasWhenNothingIsSet) {
    open();
    for (const char* const name : toggleNames) {
        EXPECT_EQ(toggle(name).text(), "Disabled") << name;
        EXPECT_EQ(colorOf(toggle(name)), QColor(255, 0, 0)) << name;
    }
    EXPECT_EQ(status().currentText(), "Online");
    EXPECT_EQ(box("prefix").text(), "[");
    EXPECT_EQ(box("postfix").text(), "]");
    EXPECT_TRUE(chosen("red"));
    EXPECT_TRUE(chosen("address"));
    for (const char* const name : {"Check1", "mw", "ti", "Check2", "Check3"})
        EXPECT_FALSE(check(name).isChecked()) << name;
    EXPECT_FALSE(check("mw").isEnabled());
    EXPECT_FALSE(check("ti").isEnabled());
    EXPECT_FALSE(window().findChild<QLabel*>("Label18")->isVisibleTo(&window()));
}

TEST_F(OptionsWindow, ShowsWhatIsSet) {
    for (const char* const key :
         {"useristyping", "constants", "preventtypo", "lastthing", "alertoffline",
          "alertopenwindow", "alertclosewindow", "alertjoinwindow", "timestamp"}) {
        set(key, "True");
    }
    for (const char* const key : {"progress", "messengerwindow", "trayicon"})
        set(key, "1");
    set("tscolor", "black");
    set("callby", "fn");
    set("tsprefix", "(");
    set("tspostfix", ")");
    set("initialStatus", "Out To Lunch");
    open();
    for (const char* const name : toggleNames) {
        EXPECT_EQ(toggle(name).text(), "Enabled") << name;
        EXPECT_EQ(colorOf(toggle(name)), QColor(0, 0, 0)) << name;
    }
    for (const char* const name : {"Check1", "mw", "ti", "Check2"})
        EXPECT_TRUE(check(name).isChecked()) << name;
    EXPECT_TRUE(check("mw").isEnabled());
    EXPECT_TRUE(check("ti").isEnabled());
    EXPECT_TRUE(chosen("black"));
    EXPECT_TRUE(chosen("fn"));
    EXPECT_EQ(box("prefix").text(), "(");
    EXPECT_EQ(box("postfix").text(), ")");
    EXPECT_EQ(status().currentText(), "Out To Lunch");
    EXPECT_EQ(status().currentIndex(), 5);
}

TEST_F(OptionsWindow, EachToggleHasASettingOfItsOwn) {
    const std::pair<const char*, const char*> pairs[] = {
        {"useristyping", "Label1"},     {"constants", "Label21"},
        {"preventtypo", "Label6"},      {"lastthing", "Label12"},
        {"alertoffline", "Label2"},     {"alertopenwindow", "Label3"},
        {"alertclosewindow", "Label4"}, {"alertjoinwindow", "Label15"}};
    for (const auto& [key, own] : pairs) {
        set(key, "True");
        open();
        for (const char* const name : toggleNames)
            EXPECT_EQ(toggle(name).isOn(), std::string_view(name) == own) << key << ' ' << name;
        pressCancel();
        set(key, "False");
    }
}

TEST_F(OptionsWindow, StandsInTheMiddleOfTheScreenAtAFixedSize) {
    open();
    EXPECT_EQ(window().size(), QSize(559, 403));
    EXPECT_EQ(window().minimumSize(), window().maximumSize());
    const QPoint off =
        window().frameGeometry().center() - window().screen()->availableGeometry().center();
    EXPECT_LE(off.manhattanLength(), 4);
    EXPECT_FALSE(window().windowFlags().testFlag(Qt::WindowMinimizeButtonHint));
    EXPECT_FALSE(window().windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
    EXPECT_TRUE(window().windowFlags().testFlag(Qt::WindowCloseButtonHint));
}

TEST_F(OptionsWindow, AClickOnAToggleChangesItAndWritesNothing) {
    open();
    for (const int page : {0, 4}) {
        goTo(page);
        for (const char* const name : toggleNames) {
            if (!toggle(name).isVisible()) continue;
            click(toggle(name));
            EXPECT_EQ(toggle(name).text(), "Enabled") << name;
            EXPECT_EQ(colorOf(toggle(name)), QColor(0, 0, 0)) << name;
            click(toggle(name));
            EXPECT_EQ(toggle(name).text(), "Disabled") << name;
            EXPECT_EQ(colorOf(toggle(name)), QColor(255, 0, 0)) << name;
            click(toggle(name));
        }
    }
    EXPECT_EQ(stored("useristyping"), "(none)");
    EXPECT_EQ(stored("alertoffline"), "(none)");
    pressCancel();
    EXPECT_EQ(stored("useristyping"), "(none)");
}

TEST_F(OptionsWindow, TheKeyboardReachesEveryToggleAndTheSpaceBarChangesIt) {
    open();
    toggle("Label1").setFocus();
    ASSERT_TRUE(toggle("Label1").hasFocus());
    QTest::keyClick(&toggle("Label1"), Qt::Key_Space);
    EXPECT_TRUE(toggle("Label1").isOn());
    EXPECT_EQ(toggle("Label1").accessibleName(), "Disable \"User Is Typing\" message: Enabled");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(toggle("Label21").hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    EXPECT_TRUE(toggle("Label1").hasFocus());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&toggle("Label1"))->text(QAccessible::Name),
              "Disable \"User Is Typing\" message: Enabled");
}

TEST_F(OptionsWindow, TheTabKeyGoesThroughAllThatCanBeUsedOfAPage) {
    open();
    goTo(2);
    std::vector<QString> met;
    the<FlashButton>("UserControl11(5)").setFocus();
    for (int step = 0; step < 6; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        met.push_back(QApplication::focusWidget()->objectName());
    }
    const std::vector<QString> expected{"Check2",   "prefix",   "postfix",
                                        "Command1", "Command2", "UserControl11(0)"};
    EXPECT_EQ(met, expected);
}

TEST_F(OptionsWindow, TheTabKeyComesToTheChosenButtonAndTheArrowsGoToTheOther) {
    for (const auto& [stored, chosen, other, arrow] :
         {std::tuple{"e", "address", "fn", Qt::Key_Left}, {"fn", "fn", "address", Qt::Key_Right}}) {
        SCOPED_TRACE(stored);
        set("callby", stored);
        open();
        const auto press = [](Qt::Key key) {
            QTest::keyClick(QApplication::focusWidget(), key);
            return QApplication::focusWidget()->objectName();
        };
        toggle("Label21").setFocus();
        EXPECT_EQ(press(Qt::Key_Tab), chosen);
        EXPECT_EQ(press(Qt::Key_Tab), "Label6");
        EXPECT_EQ(press(Qt::Key_Backtab), chosen);
        EXPECT_EQ(press(arrow), other);
        EXPECT_TRUE(this->chosen(other));
        // The keyboard comes back to where it was.
        EXPECT_EQ(press(Qt::Key_Backtab), "Label21");
        EXPECT_EQ(press(Qt::Key_Tab), other);
        pressCancel();
        destroyClosed();
    }
}

TEST_F(OptionsWindow, TheSpaceBarChoosesTheButtonThatHasTheKeyboard) {
    open();
    the<QRadioButton>("fn").setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_TRUE(chosen("fn"));
    toggle("Label21").setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "fn");
}

TEST_F(OptionsWindow, AButtonWithAMarkShowsTheKeyboardByTheRingOfTheSwitches) {
    open();
    goTo(2);
    QCheckBox& enabled = check("Check2");
    enabled.setFocus();
    const QImage seen = enabled.grab().toImage();
    int ofRing = 0;
    for (int y = 0; y < seen.height(); ++y) {
        for (int x = 0; x < seen.width(); ++x)
            ofRing += seen.pixelColor(x, y) == look::accent ? 1 : 0;
    }
    EXPECT_GT(ofRing, 30);
}

TEST_F(OptionsWindow, AToggleLooksLikeASwitchWithReadableWords) {
    open();
    Toggle& first = toggle("Label1");
    const QRect knob(0, 0, 32, first.height());
    const QRect word = first.rect().adjusted(34, 0, 0, 0);
    const QImage off = first.grab(knob).toImage();
    EXPECT_GE(greatestContrast(first.grab(word).toImage()), 4.5);
    first.setOn(true);
    EXPECT_GE(greatestContrast(first.grab(word).toImage()), 4.5);
    EXPECT_NE(first.grab(knob).toImage(), off);
    // Of what is written, the red is as dark; the palette's is only what the state is.
    EXPECT_GE(contrast(look::alert, look::page), 4.5);
    EXPECT_GE(contrast(look::hint, look::page), 4.5);
}

TEST_F(OptionsWindow, TheTwoPlacesAreGreyWithoutProgressAndKeepTheirTicks) {
    open();
    goTo(1);
    click(check("Check1"));
    EXPECT_TRUE(check("mw").isEnabled());
    EXPECT_TRUE(check("ti").isEnabled());
    click(check("ti"));
    click(check("Check1"));
    EXPECT_FALSE(check("mw").isEnabled());
    EXPECT_FALSE(check("ti").isEnabled());
    EXPECT_TRUE(check("ti").isChecked());
}

TEST_F(OptionsWindow, TheMouseOverAPlaceShowsItsPictureAndOverThePageNone) {
    set("progress", "1");
    open();
    goTo(1);
    auto& first = the<QWidget>("mwi");
    auto& second = the<QWidget>("tii");
    EXPECT_FALSE(first.isVisible() || second.isVisible());
    hover(check("mw"));
    EXPECT_TRUE(first.isVisible());
    EXPECT_FALSE(second.isVisible());
    hover(check("ti"));
    EXPECT_FALSE(first.isVisible());
    EXPECT_TRUE(second.isVisible());
    hover(the<QFrame>("Frame2(1)"));
    EXPECT_FALSE(first.isVisible() || second.isVisible());
}

TEST_F(OptionsWindow, AGreyPlaceShowsNoPicture) {
    open();
    goTo(1);
    hover(check("mw"));
    EXPECT_FALSE(the<QWidget>("mwi").isVisible());
}

TEST_F(OptionsWindow, TheStatusIsChosenAndNotTyped) {
    open();
    goTo(1);
    std::vector<QString> offered;
    for (int index = 0; index < status().count(); ++index)
        offered.push_back(status().itemText(index));
    const std::vector<QString> expected{"Online",       "Busy",         "Be Right Back", "Away",
                                        "On The Phone", "Out To Lunch", "Appear Offline"};
    EXPECT_EQ(offered, expected);
    status().setFocus();
    QTest::keyClicks(&status(), "busy x");
    QTest::keyClick(&status(), Qt::Key_Backspace);
    QTest::keyClick(&status(), Qt::Key_V, Qt::ControlModifier);
    QInputMethodEvent composed;
    composed.setCommitString("x");
    QApplication::sendEvent(QApplication::focusWidget(), &composed);
    EXPECT_EQ(status().currentText(), "Online");
    QTest::keyClick(&status(), Qt::Key_Down);
    EXPECT_EQ(status().currentText(), "Busy");
}

TEST_F(OptionsWindow, ABracketIsOneCharacter) {
    open();
    goTo(2);
    for (const char* const name : {"prefix", "postfix"}) {
        box(name).clear();
        QTest::keyClicks(&box(name), "{}");
        EXPECT_EQ(box(name).text(), "{");
    }
}

TEST_F(OptionsWindow, ABracketIsOfTheCodePage) {
    open();
    goTo(2);
    auto& prefix = box("prefix");
    prefix.clear();
    for (const char* const other : {"\u0159", "\u4F60", "\U0001F600", "\u05E9"}) {
        prefix.insert(QString::fromUtf8(other));
        EXPECT_EQ(prefix.text(), "") << other;
    }
    prefix.insert("\u00AB");
    EXPECT_EQ(prefix.text(), "\u00AB");
    pressOk();
    EXPECT_EQ(settings.ReadSetting("Options", "tsprefix"), "\xAB");
}

TEST_F(OptionsWindow, ABracketThatIsRefusedIsToldOf) {
    open();
    goTo(2);
    auto& prefix = box("prefix");
    QToolTip::hideText();
    const auto type = [&](const QString& text) {
        prefix.selectAll();
        QKeyEvent key(QEvent::KeyPress, 0, Qt::NoModifier, text);
        QApplication::sendEvent(&prefix, &key);
    };
    type("{");
    EXPECT_FALSE(QToolTip::isVisible());
    type("\u0159");
    EXPECT_EQ(prefix.text(), "{");
    EXPECT_TRUE(QToolTip::isVisible());
    EXPECT_EQ(QToolTip::text(), prefix.toolTip());
    EXPECT_TRUE(prefix.toolTip().contains("Western European"));
    QToolTip::hideText();
}

TEST_F(OptionsWindow, TheColorCanBeChosenWithTheAddOnAlone) {
    open();
    goTo(2);
    EXPECT_FALSE(the<QWidget>("Picture3").isVisible());
    EXPECT_FALSE(the<QWidget>("Label18").isVisible());
    pressCancel();
    facilities.registry.hasAddOn = true;
    open();
    goTo(2);
    EXPECT_TRUE(the<QWidget>("Picture3").isVisible());
    EXPECT_TRUE(the<QWidget>("Label18").isVisible());
    click(the<QWidget>("black"));
    EXPECT_TRUE(chosen("black"));
    EXPECT_FALSE(chosen("red"));
}

TEST_F(OptionsWindow, EscapeIsAsCancel) {
    open();
    click(toggle("Label1"));
    QTest::keyClick(&window(), Qt::Key_Escape);
    EXPECT_EQ(shown(), nullptr);
    EXPECT_EQ(stored("useristyping"), "(none)");
}

TEST_F(OptionsWindow, EscapeCannotEndAFirstRun) {
    openFirst();
    QTest::keyClick(&window(), Qt::Key_Escape);
    EXPECT_NE(shown(), nullptr);
    EXPECT_TRUE(calls.empty());
}

TEST_F(OptionsWindow, HasASampleOfTheStamp) {
    facilities.registry.hasAddOn = true;
    open();
    goTo(2);
    const auto sample = [] {
        QTextDocument document;
        document.setHtml(the<QLabel>("sample").text());
        return document.toPlainText();
    };
    EXPECT_EQ(sample(), "Hello");
    click(check("Check2"));
    EXPECT_EQ(sample(), "Hello [12:30:05]");
    box("prefix").setText("<");
    box("postfix").setText(">");
    EXPECT_EQ(sample(), "Hello <12:30:05>");
    const QString inRed = the<QLabel>("sample").text();
    click(the<QRadioButton>("black"));
    EXPECT_NE(the<QLabel>("sample").text(), inRed);
    // As OK would save it.
    box("prefix").clear();
    EXPECT_EQ(sample(), "Hello [12:30:05]");
}

TEST_F(OptionsWindow, SaysWhatEachControlDoes) {
    facilities.registry.hasAddOn = true;
    open();
    for (const char* const name : toggleNames)
        EXPECT_FALSE(toggle(name).toolTip().isEmpty()) << name;
    for (const char* const name : {"fn", "address", "Combo1", "Check1", "mw", "ti", "Check2",
                                   "prefix", "postfix", "Picture3", "Check3", "Text1"}) {
        EXPECT_FALSE(the<QWidget>(name).toolTip().isEmpty()) << name;
    }
    EXPECT_TRUE(toggle("Label21").toolTip().contains("hat commands"));
}

TEST_F(OptionsWindow, SaysAtItsTopHowToConnect) {
    open();
    EXPECT_TRUE(the<QWidget>("Banner").toolTip().contains("Use port 1090."));
    EXPECT_EQ(window().accessibleDescription(), "Use port 1090.");
}

TEST_F(OptionsWindow, NamesItsControlsForThoseWhoCannotSeeThem) {
    open();
    const std::pair<const char*, const char*> names[] = {
        {"Check1", "Sign In Progress: Enabled"},
        {"Check2", "Timestamp Messages: Enabled"},
        {"Check3", "Window Rename: Enabled"},
        {"mw", "Show in: Messenger Window"},
    };
    for (const auto& [name, text] : names) {
        QAccessibleInterface* const face =
            QAccessible::queryAccessibleInterface(&the<QWidget>(name));
        EXPECT_EQ(face->text(QAccessible::Name), text);
    }
    // A list's own name is what is chosen; what it is for is its label's.
    const auto labels =
        QAccessible::queryAccessibleInterface(&status())->relations(QAccessible::Label);
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(labels.front().first->text(QAccessible::Name), "Inital Sign In Status");
    QAccessibleInterface* const toggleFace =
        QAccessible::queryAccessibleInterface(&toggle("Label1"));
    EXPECT_EQ(toggleFace->role(), QAccessible::CheckBox);
    EXPECT_FALSE(toggleFace->state().checked);
    toggle("Label1").setOn(true);
    EXPECT_TRUE(toggleFace->state().checked);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&window())->role(), QAccessible::Dialog);
}

TEST_F(OptionsWindow, ATabIntoTheTitleSelectsNothing) {
    set("windowrename", "1");
    set("windowrenamecaption", "Mine");
    open();
    goTo(5);
    check("Check3").setFocus();
    QTest::keyClick(&check("Check3"), Qt::Key_Tab);
    ASSERT_TRUE(box("Text1").hasFocus());
    EXPECT_FALSE(box("Text1").hasSelectedText());
    QTest::keyClicks(&box("Text1"), "!");
    EXPECT_EQ(box("Text1").text(), "Mine!");
}

TEST_F(OptionsWindow, KeysThatNoControlTakesDoNothing) {
    open();
    for (const auto key : {Qt::Key_Return, Qt::Key_F1, Qt::Key_X}) {
        QTest::keyClick(&window(), key);
        EXPECT_NE(shown(), nullptr) << key;
    }
    EXPECT_TRUE(calls.empty());
}

}  // namespace

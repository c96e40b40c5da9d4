#include "tests/ui/options/OptionsFixture.h"
#include "ui/help/frmhelp.h"

#include <QAccessible>
#include <QFrame>
#include <QGroupBox>

#include <map>
#include <tuple>

namespace {

/// What the pages of the options say and where, and that all of it can be read.
using Pages = OptionsFixture;

constexpr std::tuple<int, const char*, const char*> texts[] = {
    {0, "Label22", "Disable \"User Is Typing\" message"},
    {0, "Label23", "Allow Message Constants"},
    {0, "Label19", "Label Contact By (For Open/Join Window Alerts)"},
    {0, "Label5", "Prevent Command Typo (i.e \"!notee\" instead of \"!note\")"},
    {0, "Label13", "Show Last Thing Contact Said"},
    {1, "Label9", "Inital Sign In Status"},
    {1, "Label10", "Sign In Progress"},
    {1, "Label7", "Show in:"},
    {2, "Label8", "Prefix"},
    {2, "Label16", "Postfix"},
    {2, "Label18", "Color:"},
    {4, "Label17", "Change the way you are alerted on contact actions."},
    {4, "Label24", "Alert when a user goes offline"},
    {4, "Label25", "Alert when a user closes a conversation window"},
    {4, "Label26", "Alert when a user open a conversation window"},
    {4, "Label27", "Alert when a user joins a conversation window"},
};

constexpr std::tuple<int, const char*, const char*> buttonTexts[] = {
    {0, "fn", "Freindly Name (Nick Name)"},
    {0, "address", "Email Address"},
    {1, "Check1", "Enabled"},
    {1, "mw", "Messenger Window"},
    {1, "ti", "Tray Icon Tool Tip"},
    {2, "Check2", "Enabled"},
    {2, "red", "Red"},
    {2, "black", "Black"},
    {5, "Check3", "Enabled"},
};

/// Toggles and the headings above them.
constexpr std::tuple<int, const char*, const char*> toggles[] = {
    {0, "Label1", "Label22"},  {0, "Label21", "Label23"}, {0, "Label6", "Label5"},
    {0, "Label12", "Label13"}, {4, "Label2", "Label24"},  {4, "Label4", "Label25"},
    {4, "Label3", "Label26"},  {4, "Label15", "Label27"},
};

constexpr std::array<int, 5> indices{0, 1, 2, 4, 5};

TEST_F(Pages, SayWhatTheySayToTheLetter) {
    open();
    for (const auto& [page, name, text] : texts)
        EXPECT_EQ(named<QLabel>(pageOf(window(), page), name).text(), text) << name;
    for (const auto& [page, name, text] : buttonTexts)
        EXPECT_EQ(named<QAbstractButton>(pageOf(window(), page), name).text(), text) << name;
    EXPECT_EQ(the<QPushButton>("Command2").text(), "&OK");
    EXPECT_EQ(the<QPushButton>("Command1").text(), "&Cancel");
}

TEST_F(Pages, HaveEachToggleUnderItsHeading) {
    open();
    for (const auto& [page, name, heading] : toggles) {
        const auto& above = named<QLabel>(pageOf(window(), page), heading);
        const auto& below = named<Toggle>(pageOf(window(), page), name);
        EXPECT_GE(below.y(), above.y() + above.height()) << name;
        EXPECT_LT(below.y(), above.y() + above.height() + 10) << name;
    }
}

TEST_F(Pages, HaveTheirButtonsInTheirPlaces) {
    open();
    const std::tuple<int, const char*, int> buttons[] = {{0, "   General Options", 72},
                                                         {1, "   Signing In", 112},
                                                         {2, "   Timestamp Messages", 152},
                                                         {4, "   Alerts", 192},
                                                         {5, "   Window Rename", 232}};
    for (const auto& [index, caption, top] : buttons) {
        const FlashButton& button = buttonOf(window(), index);
        EXPECT_EQ(button.Caption(), caption);
        EXPECT_EQ(button.geometry(), QRect(8, top, 171, 35));
    }
    EXPECT_EQ(the<QWidget>("Command2").geometry(), QRect(480, 368, 65, 25));
    EXPECT_EQ(the<QWidget>("Command1").geometry(), QRect(400, 368, 73, 25));
    EXPECT_EQ(the<QWidget>("mwi").geometry(), QRect(200, 136, 132, 50));
    EXPECT_EQ(the<QWidget>("tii").geometry(), QRect(200, 136, 132, 50));
}

TEST_F(Pages, ShowOneAtATime) {
    open();
    const auto onlyShown = [](int page) {
        for (const int index : indices)
            EXPECT_EQ(pageOf(window(), index).isVisible(), index == page) << index;
    };
    onlyShown(0);
    for (const int page : {1, 2, 4, 5, 0}) {
        goTo(page);
        onlyShown(page);
        EXPECT_EQ(pageOf(window(), page).pos(), QPoint(192, 64));
    }
    EXPECT_EQ(window().findChild<QWidget*>("Frame2(3)"), nullptr);
    EXPECT_EQ(window().findChild<QWidget*>("UserControl11(3)"), nullptr);
}

TEST_F(Pages, PlayTheMovieOfTheirSubject) {
    open();
    const std::pair<int, const char*> movies[] = {{0, "generaloptions"},
                                                  {1, "signingin"},
                                                  {2, "tsmessages"},
                                                  {4, "alerts"},
                                                  {5, "windowrename"}};
    for (const auto& [page, name] : movies) {
        const auto& movie = named<ShockwaveFlash>(pageOf(window(), page), name);
        EXPECT_EQ(movie.Movie(), folders::movie((std::string(name) + ".swf").c_str()));
        EXPECT_TRUE(std::filesystem::exists(movie.Movie())) << name;
    }
    EXPECT_EQ(named<ShockwaveFlash>(pageOf(window(), 0), "ShockwaveFlash1").Movie(), "");
}

/// Fails for text that has less room than it needs.
void expectReadable(QWidget& page) {
    for (const TextLabel* const label : page.findChildren<TextLabel*>()) {
        EXPECT_LE(label->heightForWidth(label->width()), label->height())
            << label->text().toStdString();
    }
    for (const QLabel* const label : page.findChildren<QLabel*>()) {
        if (dynamic_cast<const TextLabel*>(label) != nullptr) continue;
        EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), label->width())
            << label->text().toStdString();
        EXPECT_LE(label->fontMetrics().height(), label->height()) << label->text().toStdString();
    }
    for (const QAbstractButton* const button : page.findChildren<QAbstractButton*>()) {
        const bool isMarked = button->inherits("QCheckBox") || button->inherits("QRadioButton");
        const int needed = isMarked ? button->sizeHint().width()
                                    : button->fontMetrics().horizontalAdvance(button->text()) + 10;
        EXPECT_LE(needed, button->width()) << button->text().toStdString();
        EXPECT_LE(button->fontMetrics().height(), button->height());
    }
    for (const QComboBox* const list : page.findChildren<QComboBox*>())
        EXPECT_LE(list->sizeHint().width(), list->width());
}

/// Fails for pages of the options that cannot be read.
void expectReadableOptions(QWidget& window) {
    for (const int page : indices) {
        showPage(window, page);
        expectReadable(pageOf(window, page));
        expectApart(pageOf(window, page));
    }
    expectReadable(window);
}

/// The same for the help, at every step of its constants.
void expectReadableHelp() {
    FormHolder<frmhelp> shownHelp(FormLife::UntilClosed);
    shownHelp.Show();
    QWidget& form = *windowOf("Cobweave - Help");
    for (const int page : {0, 5, 7, 2, 3, 1, 6}) {
        showPage(form, page);
        expectReadable(pageOf(form, page));
        expectApart(pageOf(form, page));
    }
    for (int step = 0; step < 4; ++step) {
        click(named<FlashButton>(form, "FlashButton1").b1);
        expectReadable(pageOf(form, 1));
    }
    expectReadable(form);
}

TEST_F(Pages, OfTheOptionsCanBeRead) {
    open();
    expectReadableOptions(window());
}

TEST_F(Pages, OfTheHelpCanBeReadAtEveryStep) { expectReadableHelp(); }

TEST_F(Pages, FollowTheLettersOfTheDesktop) {
    const DesktopLetters letters(16);
    facilities.registry.hasAddOn = true;
    open();
    EXPECT_EQ(window().size(), QSize(559, 403) * 16 / 11);
    EXPECT_EQ(pageOf(window(), 0).geometry(), QRect(279, 93, 508, 429));
    EXPECT_EQ(check("Check1").font().pixelSize(), 16);
    EXPECT_EQ(the<QLabel>("Label22").font().pixelSize(), 16);
    expectReadableOptions(window());
    expectReadableHelp();
}

TEST_F(Pages, AreNamedByTheirSubjectForThoseWhoCannotSeeThem) {
    open();
    QAccessibleInterface* const page = QAccessible::queryAccessibleInterface(&pageOf(window(), 2));
    EXPECT_EQ(page->role(), QAccessible::Grouping);
    EXPECT_EQ(page->text(QAccessible::Name), "Timestamp Messages");
    QAccessibleInterface* const title =
        QAccessible::queryAccessibleInterface(&the<QWidget>("tsmessages"));
    EXPECT_EQ(title->role(), QAccessible::StaticText);
    EXPECT_EQ(title->text(QAccessible::Name), "Timestamp Messages");
}

TEST_F(Pages, SayNothingOfWhatOnlyDecorates) {
    facilities.registry.hasAddOn = true;
    open();
    FormHolder<frmhelp> help(FormLife::UntilClosed);
    help.Show();
    for (QWidget* const form : {&window(), windowOf("Cobweave - Help")}) {
        for (QWidget* const control : form->findChildren<QWidget*>()) {
            QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(control);
            const bool isLeftOut = face->state().invisible || !control->isVisible();
            EXPECT_TRUE(isLeftOut || !face->text(QAccessible::Name).isEmpty())
                << control->metaObject()->className() << ' ' << control->objectName().toStdString();
        }
    }
}

TEST_F(Pages, EveryControlThatTakesTheKeyboardHasANameForThoseWhoCannotSeeIt) {
    facilities.registry.hasAddOn = true;
    open();
    for (const QWidget* const control : window().findChildren<QWidget*>()) {
        if (control->focusPolicy() == Qt::NoFocus || control->window() != &window()) continue;
        const auto* const button = dynamic_cast<const QAbstractButton*>(control);
        const bool named = !control->accessibleName().isEmpty() ||
                           (button != nullptr && !button->text().isEmpty()) ||
                           dynamic_cast<const QComboBox*>(control->parent()) != nullptr;
        EXPECT_TRUE(named) << control->metaObject()->className() << ' '
                           << control->objectName().toStdString();
    }
}

}  // namespace

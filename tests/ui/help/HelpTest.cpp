#include "tests/ui/windows.h"
#include "ui/common/FormHolder.h"
#include "ui/help/frmhelp.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>

namespace {

constexpr const char* helpCaption = "Cobweave - Help";
constexpr std::array helpPages{0, 5, 7, 2, 3, 1, 6};

using Row = std::pair<const char*, const char*>;
constexpr std::array<std::array<Row, 3>, 4> steps{{
    {{{"Current Winamp Song", "Type <ws> into your message. Remember w = winamp, s = song."},
      {"Current Email Address", "Type <me> into your message. Remember m = my, e = email."},
      {"Current Nick Name", "Type <mn> into your message. Remember m = my, n = nickname."}}},
    {{{"Contact Email Address", "Type <ce> into your message. Remember c = contact, e = email."},
      {"Contact Nick Name", "Type <cn> into your message. Remember c = contact, n = nickname."},
      {"Time", "Type <t> into your message."}}},
    {{{"Date", "Type <d> into your message."},
      {"", ""},
      {"Computer Uptime", "Type <ut> into your message. Remember u = up, t = time."}}},
    {{{"Total Ram (Physically In Computer)",
       "Type <tr> into your message. Remember t = total, r = ram."},
      {"Used Ram", "Type <ur> into your message. Remember u = used, r = ram."},
      {"Ram Usage (In Percentage, shows '%' also)",
       "Type <ru> into your message. Remember r = ram, u = usage."}}},
}};

class HelpWindow : public testing::Test {
protected:
    HelpWindow() {
        help.Show();
        (void)QTest::qWaitForWindowActive(&window());
    }

    ~HelpWindow() override { destroyClosed(); }

    [[nodiscard]] static QWidget& window() {
        QWidget* const shown = windowOf(helpCaption);
        if (shown == nullptr) throw std::runtime_error("the help is not shown");
        return *shown;
    }
    [[nodiscard]] static QWidget& page(int index) { return pageOf(window(), index); }
    static void goTo(int index) { showPage(window(), index); }
    [[nodiscard]] static QString text(const char* name) {
        return named<QLabel>(page(1), name).text();
    }
    static void pressNext() { click(named<FlashButton>(window(), "FlashButton1").b1); }
    /// The page shows the rows of this step.
    [[nodiscard]] static bool shows(std::size_t step) {
        const auto& [one, two, three] = steps.at(step);
        return text("Title1") == one.first && text("Sub1") == one.second &&
               text("Title2") == two.first && text("sub2") == two.second &&
               text("Title3") == three.first && text("sub3") == three.second;
    }

    FormHolder<frmhelp> help{FormLife::UntilClosed};
};

TEST_F(HelpWindow, HasSevenButtonsInTheirOrder) {
    const char* const captions[] = {"   Winamp Nick Name",
                                    "   Winamp Contol",
                                    "   Nick Name Change",
                                    "   Random Message Color",
                                    "   Web Engines",
                                    "   Message Constants",
                                    "   Notes"};
    int top = 72;
    for (std::size_t row = 0; row < helpPages.size(); ++row) {
        const auto& button = buttonOf(window(), helpPages.at(row));
        EXPECT_EQ(button.Caption(), captions[row]);
        EXPECT_EQ(button.geometry(), QRect(8, top, 171, 35));
        top += 40;
    }
    EXPECT_EQ(window().findChild<QWidget*>("UserControl11(4)"), nullptr);
    EXPECT_EQ(window().findChild<QWidget*>("Frame2(4)"), nullptr);
    EXPECT_EQ(window().findChild<QWidget*>("Frame2(8)"), nullptr);
}

TEST_F(HelpWindow, BeginsOnTheFirstPageAndShowsOneAtATime) {
    const auto onlyShown = [](int page) {
        for (const int index : helpPages)
            EXPECT_EQ(pageOf(window(), index).isVisible(), index == page) << page;
    };
    onlyShown(0);
    for (const int page : helpPages) {
        goTo(page);
        onlyShown(page);
        EXPECT_EQ(pageOf(window(), page).pos(), QPoint(200, 72));
    }
}

TEST_F(HelpWindow, StandsInItsPlaceAndSize) {
    EXPECT_EQ(window().size(), QSize(566, 437));
    EXPECT_EQ(window().minimumSize(), window().maximumSize());
    EXPECT_FALSE(window().windowFlags().testFlag(Qt::WindowMinMaxButtonsHint));
    const auto& button = named<QPushButton>(window(), "Command1");
    EXPECT_EQ(button.geometry(), QRect(472, 400, 81, 25));
    EXPECT_EQ(button.text(), "&OK");
    const auto& remark = window().findChild<QLabel*>("Label9", Qt::FindDirectChildrenOnly);
    ASSERT_NE(remark, nullptr);
    EXPECT_EQ(remark->text(),
              "Although commands are sent they are NOT visible to anyone but yourself.");
}

TEST_F(HelpWindow, TheConstantsBeginWithTheFirstStep) {
    goTo(1);
    EXPECT_TRUE(shows(0));
    EXPECT_EQ(text("Title1"), "Current Winamp Song");
    EXPECT_EQ(text("Sub1"), "Type <ws> into your message. Remember w = winamp, s = song.");
}

TEST_F(HelpWindow, NextGoesThroughTheStepsAndRound) {
    goTo(1);
    for (const std::size_t step : {1U, 2U, 3U, 0U, 1U, 2U, 3U, 0U}) {
        pressNext();
        EXPECT_TRUE(shows(step)) << step;
    }
}

TEST_F(HelpWindow, AStepStaysUntilTheWindowIsClosed) {
    goTo(1);
    pressNext();
    pressNext();
    goTo(6);
    goTo(1);
    EXPECT_TRUE(shows(2));
    EXPECT_EQ(text("Title2"), "");
    EXPECT_EQ(text("sub2"), "");
    click(named<QPushButton>(window(), "Command1"));
    EXPECT_EQ(windowOf(helpCaption), nullptr);
    help.Show();
    EXPECT_TRUE(page(0).isVisible());
    goTo(1);
    EXPECT_TRUE(shows(0));
    pressNext();
    EXPECT_TRUE(shows(1));
}

TEST_F(HelpWindow, NextIsAWhiteButtonOfItsSize) {
    goTo(1);
    auto& next = named<FlashButton>(window(), "FlashButton1");
    EXPECT_EQ(next.Caption(), " Next");
    EXPECT_TRUE(next.whiteBG());
    EXPECT_EQ(next.geometry(), QRect(248, 168, 97, 41));
}

TEST_F(HelpWindow, TheBulletOfTheColorsShowsThePageItStandsOn) {
    goTo(2);
    click(named<QWidget>(window(), "Image5"));
    for (const int index : helpPages)
        EXPECT_EQ(page(index).isVisible(), index == 2);
}

TEST_F(HelpWindow, IsClosedByEscape) {
    QTest::keyClick(&window(), Qt::Key_Escape);
    EXPECT_EQ(windowOf(helpCaption), nullptr);
}

TEST_F(HelpWindow, IsUsableByTheKeyboardAlone) {
    auto& button = buttonOf(window(), 1);
    for (int presses = 0; presses < 20 && !button.hasFocus(); ++presses)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_TRUE(button.hasFocus());
    press(button, Qt::Key_Space);
    EXPECT_TRUE(comesTrue([] { return page(1).isVisible(); }));
    auto& next = named<FlashButton>(window(), "FlashButton1");
    for (int presses = 0; presses < 20 && !next.hasFocus(); ++presses)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_TRUE(next.hasFocus());
    press(next, Qt::Key_Return);
    EXPECT_TRUE(comesTrue([] { return shows(1); }));
}

}  // namespace

#include "platform/Folders.h"
#include "tests/ui/windows.h"
#include "ui/about/frmabout.h"
#include "ui/common/FormHolder.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QPointer>
#include <QPushButton>

namespace {

constexpr const char* aboutCaption = "Cobweave - About";

TEST(AboutWindow, PlaysItsMovieAndClosesByItsButton) {
    FormHolder<frmabout> about(FormLife::UntilClosed);
    about.Show();
    QPointer<QWidget> window(windowOf(aboutCaption));
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->size(), QSize(494, 271));
    EXPECT_EQ(window->minimumSize(), window->maximumSize());
    EXPECT_FALSE(window->windowFlags().testFlag(Qt::WindowMinMaxButtonsHint));
    const auto& movie = named<ShockwaveFlash>(*window, "ShockwaveFlash1");
    EXPECT_EQ(movie.Movie(), folders::movie("about.swf"));
    auto& button = named<QPushButton>(*window, "Command1");
    EXPECT_EQ(button.geometry(), QRect(416, 240, 73, 25));
    EXPECT_EQ(button.text(), "&OK");
    about.Show();
    EXPECT_EQ(windowOf(aboutCaption), window);
    click(button);
    EXPECT_EQ(windowOf(aboutCaption), nullptr);
    EXPECT_TRUE(comesTrue([&] { return window.isNull(); }));
}

TEST(AboutWindow, SaysItsTextToThoseWhoCannotSeeIt) {
    FormHolder<frmabout> about(FormLife::UntilClosed);
    about.Show();
    QWidget& window = *windowOf(aboutCaption);
    QAccessibleInterface* const movie =
        QAccessible::queryAccessibleInterface(&named<ShockwaveFlash>(window, "ShockwaveFlash1"));
    EXPECT_EQ(movie->role(), QAccessible::StaticText);
    EXPECT_TRUE(movie->text(QAccessible::Name).contains("MSN Messenger 6"));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&window)->role(), QAccessible::Dialog);
}

TEST(AboutWindow, SaysHowToConnect) {
    frmabout about("Use port 1090.\nIt is <open>.");
    const auto& movie = named<ShockwaveFlash>(about, "ShockwaveFlash1");
    EXPECT_EQ(movie.toolTip(), "<p>Use port 1090.<br>It is &lt;open&gt;.</p>");
    EXPECT_EQ(movie.accessibleDescription(), "Use port 1090.\nIt is <open>.");
}

TEST(AboutWindow, RestsAfterItsPlay) {
    FormHolder<frmabout> about(FormLife::UntilClosed);
    about.Show();
    auto& movie = named<ShockwaveFlash>(*windowOf(aboutCaption), "ShockwaveFlash1");
    // Small pictures take less of the processor.
    movie.resize(40, 20);
    EXPECT_TRUE(comesTrue([&] { return !movie.isReading() && !movie.isAwake(); }));
    EXPECT_GT(movie.framesPlayed(), 90);
}

TEST(AboutWindow, ClosesByEscapeAndByEnterOnItsButton) {
    FormHolder<frmabout> about(FormLife::UntilClosed);
    about.Show();
    QTest::keyClick(windowOf(aboutCaption), Qt::Key_Escape);
    EXPECT_EQ(windowOf(aboutCaption), nullptr);
    about.Show();
    QTest::keyClick(&named<QPushButton>(*windowOf(aboutCaption), "Command1"), Qt::Key_Return);
    EXPECT_EQ(windowOf(aboutCaption), nullptr);
}

}  // namespace

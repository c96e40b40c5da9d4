#include "platform/Folders.h"
#include "tests/movies/MovieFile.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/ui/windows.h"
#include "ui/common/FlashButton.h"
#include "ui/options/optionPictures.h"

#include <gtest/gtest.h>

#include <QAccessible>

#include <fstream>
#include <string>
#include <utility>
#include <vector>

namespace {

class Button : public testing::Test {
protected:
    Button() {
        button.ReadProperties({.Icon = optionPictures::paintBell, .Caption = "   Alerts"});
        button.Click = [this] { ++clicks; };
        button.PropertyChanged = [this](std::string_view name) { changed.emplace_back(name); };
        button.setGeometry(5, 5, 171, 35);
        window.resize(300, 100);
        window.show();
        window.activateWindow();
        (void)QTest::qWaitForWindowActive(&window);
        EXPECT_TRUE(comesTrue([&] { return !button.b1.isReading(); }));
    }
    /// What it shows when it is whole: the next drawings complete one whose time has run out.
    [[nodiscard]] QImage face() {
        QImage last;
        EXPECT_TRUE(comesTrue([&] {
            const QImage before = std::exchange(last, button.grab().toImage());
            return last == before;
        }));
        return last;
    }
    [[nodiscard]] static QColor groundOf(const QWidget& control) {
        return control.palette().color(QPalette::Window);
    }

    QWidget window;
    FlashButton button{&window};
    int clicks = 0;
    std::vector<std::string> changed;
};

TEST_F(Button, IsPressedByTheMouseThroughItsMovie) {
    for (int count = 1; count <= 3; ++count) {
        click(button.b1);
        EXPECT_TRUE(comesTrue([&] { return clicks == count; }));
    }
}

TEST_F(Button, LetsTheMouseThroughItsCaptionAndItsIcon) {
    for (const QPoint at : {QPoint(60, 17), QPoint(18, 17)}) {
        EXPECT_EQ(window.childAt(button.pos() + at), &button.b1);
    }
}

TEST_F(Button, IsPressedByTheSpaceBarAndEnter) {
    button.setFocus();
    int expected = 0;
    for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        QTest::keyClick(&button, key);
        ++expected;
        EXPECT_TRUE(comesTrue([&] { return clicks == expected; })) << key;
    }
    QTest::keyClick(&button, Qt::Key_X);
    EXPECT_EQ(clicks, expected);
}

TEST_F(Button, IsPressedBeforeItsMovieHasBeenRead) {
    const TemporaryFolder folder;
    const std::filesystem::path file = folder.path() / "late.swf";
    std::ofstream(file, std::ios::binary) << clickMovie().longToRead().packedFile();
    FlashButton late(&window, file);
    late.Click = [this] { ++clicks; };
    late.setGeometry(5, 50, 171, 35);
    late.show();
    ASSERT_TRUE(late.b1.isReading());
    QTest::mouseClick(&late.b1, Qt::LeftButton);
    QTest::keyClick(&late, Qt::Key_Space);
    late.click();
    EXPECT_EQ(clicks, 0);
    EXPECT_TRUE(comesTrue([&] { return clicks == 3; }));
}

TEST_F(Button, IsPressedByAssistivePrograms) {
    QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(&button);
    ASSERT_NE(face, nullptr);
    EXPECT_EQ(face->role(), QAccessible::Button);
    EXPECT_EQ(face->text(QAccessible::Name), "Alerts");
    face->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(comesTrue([&] { return clicks == 1; }));
}

TEST_F(Button, TakesNoOtherCommandOfAMovieForAPress) {
    for (const char* const command : {"", "Click", "CLICK", "click ", "clicks", "quit"})
        button.b1.FSCommand(command, "click");
    EXPECT_EQ(clicks, 0);
    button.b1.FSCommand("click", "whatever");
    EXPECT_EQ(clicks, 1);
}

TEST_F(Button, DrawsNothingAndCannotBePressedWithoutItsMovie) {
    const TemporaryFolder folder;
    const std::filesystem::path none = folder.path() / "none.swf";
    const std::filesystem::path blank = folder.path() / "blank.swf";
    std::ofstream(blank).close();
    const std::filesystem::path wrong = folder.path() / "wrong.swf";
    std::ofstream(wrong) << "This is no movie.";
    // Not read at once.
    const std::filesystem::path large = folder.path() / "large.swf";
    std::ofstream(large) << std::string(std::size_t{8} << 20, '.');
    for (const std::filesystem::path& file :
         {none, blank, wrong, large, folder.path(), std::filesystem::path("/dev/null")}) {
        FlashButton empty(&window, file);
        empty.ReadProperties({.Icon = optionPictures::paintBell, .Caption = "   Alerts"});
        empty.Click = [this] { ++clicks; };
        empty.setGeometry(5, 50, 171, 35);
        empty.show();
        EXPECT_TRUE(comesTrue([&] { return !empty.b1.isReading(); }));
        empty.setFocus();
        QCoreApplication::processEvents();
        const QImage ground = window.grab(empty.geometry()).toImage();
        for (int y = 0; y < ground.height(); ++y) {
            for (int x = 0; x < ground.width(); ++x)
                ASSERT_EQ(ground.pixel(x, y), ground.pixel(0, 0)) << file;
        }
        click(empty.b1);
        QTest::keyClick(&empty, Qt::Key_Space);
        QTest::keyClick(&empty, Qt::Key_Return);
        EXPECT_EQ(clicks, 0) << file;
        EXPECT_NE(QApplication::focusWidget(), &empty);
    }
}

TEST_F(Button, IsWhiteUpToItsCornersWhereItsGroundIsWhite) {
    button.setWhiteBG(true);
    const QImage picture = face();
    EXPECT_EQ(picture.pixelColor(0, 0), QColor(Qt::white));
    EXPECT_EQ(picture.pixelColor(picture.width() - 1, picture.height() - 1), QColor(Qt::white));
}

TEST_F(Button, ShowsItsMovieItsCaptionAndItsIcon) {
    EXPECT_EQ(button.b1.Movie(), folders::movie("button.swf"));
    EXPECT_EQ(button.b1.size(), button.size());
    EXPECT_EQ(button.Label1.text(), "   Alerts");
    const QImage picture = face();
    EXPECT_NE(picture.pixel(picture.width() / 2, picture.height() / 2), qRgba(0, 0, 0, 0));
    EXPECT_TRUE(button.Label1.isVisible());
    EXPECT_TRUE(button.Image2.isVisible());
}

TEST_F(Button, ShowsWhenItHasTheKeyboard) {
    QWidget other(&window);
    other.setFocusPolicy(Qt::StrongFocus);
    other.show();
    other.setFocus();
    const QImage without = face();
    button.setFocus();
    ASSERT_TRUE(button.hasFocus());
    EXPECT_NE(face(), without);
    other.setFocus();
    EXPECT_EQ(face(), without);
}

TEST_F(Button, GetsTheKeyboardByAClick) {
    QWidget other(&window);
    other.setFocusPolicy(Qt::StrongFocus);
    other.show();
    other.setFocus();
    ASSERT_FALSE(button.hasFocus());
    click(button.b1);
    EXPECT_TRUE(button.hasFocus());
}

TEST_F(Button, IsNeverHigherThanItsBound) {
    for (const auto& [wanted, height] : {std::pair(35, 35), {41, 41}, {42, 41}, {200, 41}}) {
        button.resize(100, wanted);
        EXPECT_EQ(button.height(), height);
        EXPECT_EQ(button.b1.size(), QSize(100, height));
        // 15 twips lower than the middle, and the middle.
        EXPECT_EQ(button.Label1.y(), (height * 15 / 2 - 255 / 2 + 15) / 15);
        EXPECT_EQ(button.Image2.y(), (height * 15 / 2 - 240 / 2) / 15);
    }
}

TEST_F(Button, KeepsTheIconThatItWasGivenUnderAnotherPicture) {
    button.setButtonIcon(optionPictures::paintClock);
    EXPECT_EQ(button.Icon(), optionPictures::paintBell);
    EXPECT_EQ(changed, std::vector<std::string>{"ButtonIcon"});
    const QImage other = button.Image2.grab().toImage();
    EXPECT_EQ(button.WriteProperties().Icon, optionPictures::paintBell);
    EXPECT_NE(button.Image2.grab().toImage(), other);
}

TEST_F(Button, ReportsEveryPropertyThatIsWritten) {
    button.setCaption(" Next");
    button.setIcon(optionPictures::paintClock);
    button.setWhiteBG(false);
    EXPECT_EQ(changed, (std::vector<std::string>{"Caption", "Icon", "whiteBG"}));
    EXPECT_EQ(button.Caption(), " Next");
    EXPECT_EQ(button.Label1.text(), " Next");
    EXPECT_EQ(button.accessibleName(), "Next");
    EXPECT_EQ(button.Icon(), optionPictures::paintClock);
}

TEST_F(Button, StaysWhiteOnceItWas) {
    EXPECT_NE(groundOf(button), QColor(Qt::white));
    button.setWhiteBG(true);
    EXPECT_EQ(groundOf(button), QColor(Qt::white));
    EXPECT_TRUE(button.autoFillBackground());
    button.setWhiteBG(false);
    EXPECT_FALSE(button.whiteBG());
    EXPECT_EQ(groundOf(button), QColor(Qt::white));
}

TEST_F(Button, BeginsWithTheDefaultsAndComesBackAsItWasKept) {
    FlashButton fresh(&window);
    EXPECT_EQ(fresh.Caption(), "Caption");
    EXPECT_EQ(fresh.Icon(), nullptr);
    EXPECT_FALSE(fresh.whiteBG());
    button.setWhiteBG(true);
    fresh.ReadProperties(button.WriteProperties());
    EXPECT_EQ(fresh.Caption(), "   Alerts");
    EXPECT_EQ(fresh.Label1.text(), "   Alerts");
    EXPECT_EQ(fresh.Icon(), optionPictures::paintBell);
    EXPECT_EQ(groundOf(fresh), QColor(Qt::white));
}

TEST_F(Button, MayEndByItsOwnPress) {
    auto* const passing = new FlashButton(&window);
    passing->setGeometry(5, 50, 171, 35);
    passing->show();
    passing->Click = [this, passing] {
        ++clicks;
        passing->deleteLater();
    };
    click(passing->b1);
    EXPECT_TRUE(comesTrue([&] { return clicks == 1; }));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

}  // namespace

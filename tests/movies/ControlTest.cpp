#include "movies/qt/ShockwaveFlash.h"
#include "tests/movies/MovieFile.h"
#include "tests/movies/Screening.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/comesTrue.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <fstream>
#include <vector>

namespace {

class MovieControl : public testing::Test {
protected:
    MovieControl() { control.resize(200, 100); }

    std::filesystem::path save(const std::string& content, const char* name = "movie.swf") {
        const auto path = folder.path() / name;
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }
    /// Sets a movie, which is read by then, on a busy machine in pieces.
    static void set(ShockwaveFlash& movie, const std::filesystem::path& path) {
        movie.setMovie(path);
        EXPECT_TRUE(comesTrue([&] { return !movie.isReading(); }));
    }
    void play(const MovieFile& movie) { set(control, save(movie.packedFile())); }
    QRgb at(int x, int y) {
        QImage image(control.size(), QImage::Format_RGB32);
        image.fill(Qt::yellow);
        control.render(&image, {}, {}, QWidget::DrawChildren);
        return image.pixel(x, y) & 0xFFFFFFU;
    }
    void send(QEvent::Type type, int x, int y, Qt::MouseButtons held) {
        QMouseEvent event(type, QPointF(x, y), control.mapToGlobal(QPointF(x, y)),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, held, {});
        QCoreApplication::sendEvent(&control, &event);
    }

    TemporaryFolder folder;
    ShockwaveFlash control;
};

constexpr QRgb yellow = 0xFFFF00;

TEST_F(MovieControl, IsEmptyWithoutAMovie) {
    EXPECT_EQ(at(100, 50), yellow);
    EXPECT_TRUE(control.Movie().empty());
    control.show();
    EXPECT_FALSE(control.isAwake());
    EXPECT_FALSE(control.key(Qt::Key_Space));
}

TEST_F(MovieControl, StaysEmptyWhenTheFileIsNone) {
    const std::filesystem::path paths[] = {folder.path() / "missing.swf", folder.path(),
                                           save("", "empty.swf"), save("CWS\x06", "short.swf"),
                                           save("plain text, and not a movie", "text.swf")};
    control.show();
    for (const auto& path : paths) {
        play(MovieFile().tag(Tag::SetBackgroundColor, Bits().rgb(green)).show(2));
        EXPECT_EQ(at(100, 50), green);
        EXPECT_TRUE(control.isAwake());
        set(control, path);
        EXPECT_EQ(control.Movie(), path);
        EXPECT_EQ(at(100, 50), yellow);
        EXPECT_FALSE(control.isAwake());
    }
}

TEST_F(MovieControl, LetsTheParentShowThroughAMovieWithoutABackground) {
    play(MovieFile().square(1, 0, 0, 50, red).place(1, 1).show());
    EXPECT_EQ(at(75, 25), red);
    EXPECT_EQ(at(125, 75), yellow);
}

TEST_F(MovieControl, KeepsTheMovieInShapeUnlessItIsToFillTheSurface) {
    play(MovieFile()
             .tag(Tag::SetBackgroundColor, Bits().rgb(blue))
             .square(1, 0, 0, 50, red)
             .place(1, 1)
             .show());
    // 100 by 100 in 200 by 100.
    EXPECT_EQ(at(40, 50), yellow);
    EXPECT_EQ(at(60, 25), red);
    EXPECT_EQ(at(140, 25), blue);
    EXPECT_EQ(at(160, 50), yellow);
    control.setExactFit(true);
    EXPECT_TRUE(control.exactFit());
    EXPECT_EQ(at(10, 25), red);
    EXPECT_EQ(at(90, 40), red);
    EXPECT_EQ(at(190, 25), blue);
}

TEST_F(MovieControl, RestsWhenNothingMoves) {
    play(MovieFile().square(1, 0, 0, 50, red).place(1, 1).show());
    control.show();
    EXPECT_FALSE(control.isAwake());
    EXPECT_EQ(control.framesPlayed(), 0);
}

/// Keeps the times between the paintings of a window, in milliseconds.
class Paintings final : public QObject {
public:
    explicit Paintings(QObject& window) {
        time.start();
        window.installEventFilter(this);
    }
    std::vector<qint64> gaps;

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::Paint) gaps.push_back(time.restart());
        return false;
    }

private:
    QElapsedTimer time;
};

TEST_F(MovieControl, IsDrawnAgainMoreAndMoreRarelyWhenTheTimeWasNotEnough) {
    MovieFile inner;
    for (unsigned depth = 1; depth <= 2000; ++depth)
        inner.place(1, depth);
    control.resize(1000, 1000);
    play(MovieFile().square(1, 0, 0, 100, red).sprite(2, inner.show()).place(2, 1).show());
    const Paintings paintings(control);
    control.show();
    constexpr int longGap = 10 << 5;
    EXPECT_TRUE(
        comesTrue([&] { return !paintings.gaps.empty() && paintings.gaps.back() >= longGap; }));
    EXPECT_FALSE(control.isAwake());
    EXPECT_GT(paintings.gaps.size(), 1U);
    EXPECT_LT(paintings.gaps.size(), 20U);
}

TEST_F(MovieControl, PlaysToItsEndAndRests) {
    play(MovieFile().show(3).actions(action(Action::Stop)).show());
    EXPECT_FALSE(control.isAwake());
    control.show();
    EXPECT_TRUE(control.isAwake());
    EXPECT_TRUE(comesTrue([&] { return !control.isAwake(); }));
    EXPECT_EQ(control.framesPlayed(), 3);
}

TEST_F(MovieControl, RestsWhileItCannotBeSeen) {
    play(MovieFile().show(2));
    control.show();
    EXPECT_TRUE(control.isAwake());
    control.hide();
    EXPECT_FALSE(control.isAwake());
    control.show();
    EXPECT_TRUE(control.isAwake());
    control.setWindowState(Qt::WindowMinimized);
    EXPECT_TRUE(comesTrue([&] { return !control.isAwake(); }));
    control.setWindowState(Qt::WindowNoState);
    EXPECT_TRUE(comesTrue([&] { return control.isAwake(); }));
}

TEST_F(MovieControl, RestsWhileItsParentCannotBeSeen) {
    QWidget window;
    auto* const child = new ShockwaveFlash(&window);
    set(*child, save(MovieFile().show(2).file()));
    EXPECT_FALSE(child->isAwake());
    window.show();
    EXPECT_TRUE(child->isAwake());
    window.setWindowState(Qt::WindowMinimized);
    EXPECT_TRUE(comesTrue([&] { return !child->isAwake(); }));
    window.setWindowState(Qt::WindowNoState);
    EXPECT_TRUE(comesTrue([&] { return child->isAwake(); }));
    window.hide();
    EXPECT_FALSE(child->isAwake());
}

TEST_F(MovieControl, GivesTheCommandsOfPressesAndKeys) {
    std::string commands;
    control.FSCommand = [&](std::string_view name, std::string_view arguments) {
        commands += name;
        commands += '(';
        commands += arguments;
        commands += ')';
    };
    control.setExactFit(true);
    play(clickMovie());
    send(QEvent::MouseMove, 50, 50, Qt::NoButton);
    EXPECT_EQ(at(50, 50), green);
    EXPECT_EQ(commands, "");
    send(QEvent::MouseButtonPress, 50, 50, Qt::LeftButton);
    EXPECT_EQ(commands, "click()");
    send(QEvent::MouseButtonRelease, 50, 50, Qt::NoButton);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&control, &leave);
    EXPECT_EQ(at(50, 50), red);
    EXPECT_TRUE(control.key(Qt::Key_Space));
    EXPECT_FALSE(control.key(Qt::Key_Return));
    EXPECT_EQ(commands, "click()click()");
    QKeyEvent key(QEvent::KeyPress, Qt::Key_Space, {});
    QCoreApplication::sendEvent(&control, &key);
    EXPECT_EQ(commands, "click()click()click()");
}

TEST_F(MovieControl, MayBeEndedByTheReceiverOfACommand) {
    auto movie = std::make_unique<ShockwaveFlash>();
    int calls = 0;
    movie->FSCommand = [&](std::string_view, std::string_view) {
        ++calls;
        movie.reset();
    };
    set(*movie, save(clickMovie().file()));
    EXPECT_TRUE(movie->key(Qt::Key_Space));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(movie, nullptr);
}

TEST_F(MovieControl, MayPlayAnotherMovieOnACommand) {
    const auto next =
        save(MovieFile().tag(Tag::SetBackgroundColor, Bits().rgb(blue)).show().file(), "next.swf");
    control.FSCommand = [&](std::string_view, std::string_view) { control.setMovie(next); };
    set(control, save(MovieFile().actions(command("a")).actions(command("b")).show().file()));
    EXPECT_EQ(control.Movie(), next);
    EXPECT_EQ(at(100, 50), blue);
}

TEST_F(MovieControl, ReadsALargeFilePieceByPiece) {
    const MovieFile movie =
        MovieFile().tag(Tag::SetBackgroundColor, Bits().rgb(green)).longToRead().show();
    control.setMovie(save(movie.packedFile()));
    EXPECT_TRUE(control.isAwake());
    EXPECT_EQ(at(100, 50), yellow);
    EXPECT_TRUE(comesTrue([&] { return !control.isAwake(); }));
    EXPECT_EQ(at(100, 50), green);
}

TEST_F(MovieControl, KeepsClicksAndKeysUntilItsMovieHasBeenRead) {
    int clicks = 0;
    control.FSCommand = [&](std::string_view, std::string_view) { ++clicks; };
    control.setExactFit(true);
    control.setMovie(save(clickMovie().longToRead().packedFile()));
    ASSERT_TRUE(control.isReading());
    send(QEvent::MouseMove, 50, 50, Qt::NoButton);
    send(QEvent::MouseButtonPress, 50, 50, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, 50, 50, Qt::NoButton);
    EXPECT_TRUE(control.key(Qt::Key_Space));
    EXPECT_TRUE(control.key(Qt::Key_X));
    EXPECT_EQ(clicks, 0);
    EXPECT_TRUE(comesTrue([&] { return clicks == 2; }));
    EXPECT_EQ(at(50, 50), green);
}

TEST_F(MovieControl, DropsWhatCameForAMovieThatIsNotPlayed) {
    int clicks = 0;
    control.FSCommand = [&](std::string_view, std::string_view) { ++clicks; };
    const auto late = save(clickMovie().longToRead().packedFile());
    control.setMovie(late);
    EXPECT_TRUE(control.key(Qt::Key_Space));
    set(control, late);
    EXPECT_EQ(clicks, 0);
    control.setMovie(save(std::string(std::size_t{8} << 20, '.'), "none.swf"));
    static_cast<void>(control.key(Qt::Key_Space));
    EXPECT_TRUE(comesTrue([&] { return !control.isReading(); }));
    EXPECT_FALSE(control.key(Qt::Key_Space));
    EXPECT_EQ(clicks, 0);
}

}  // namespace

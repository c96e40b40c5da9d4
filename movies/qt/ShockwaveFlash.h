#pragma once

#include "base/Event.h"
#include "movies/player/MovieLoader.h"
#include "movies/player/Player.h"
#include "movies/qt/MoviePainter.h"

#include <QTimer>
#include <QWidget>

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A control that plays a vector movie from a file. Without a file, or with one that is no movie,
/// it is empty: what is behind it shows, and there is no error. Its timers run only while it can be
/// seen and something in the movie moves.
class ShockwaveFlash : public QWidget {
public:
    explicit ShockwaveFlash(QWidget* parent = nullptr);
    ~ShockwaveFlash() override;

    /// Plays the file from its beginning. A large one comes in piece by piece.
    void setMovie(const std::filesystem::path& file);
    /// The file that was set last, whether it is a movie or not.
    [[nodiscard]] const std::filesystem::path& Movie() const { return path; }

    /// Whether the file, or what is in it, is still to be read.
    [[nodiscard]] bool isReading() const { return source || loader; }
    /// Whether the file has been read and held nothing to play.
    [[nodiscard]] bool isEmpty() const { return !player && !isReading(); }

    /// Stretches the movie over the whole control when `wanted`; else it keeps its shape, as large
    /// as fits, in the middle.
    void setExactFit(bool wanted);
    [[nodiscard]] bool exactFit() const { return stretched; }

    /// Passes on a key (of Qt::Key) that went down elsewhere. False when the movie has no use for
    /// it. While the movie is still read the key is kept for it, as what the mouse does is.
    bool key(int code);

    /// A command of the movie, with its arguments. The receiver may do anything, such as end this
    /// control.
    Event<std::string_view, std::string_view> FSCommand;

    /// Whether a timer runs, to play on or to read on.
    [[nodiscard]] bool isAwake() const { return frameTimer.isActive() || readTimer.isActive(); }
    /// How many frames were played since the movie was set, the first one not counted.
    [[nodiscard]] int framesPlayed() const { return frames; }

    /// The file has been read to its end, whether it is a movie or not. The receiver does not end
    /// this control.
    Event<> Read;

    /// Draws the current frame onto a surface.
    void drawOn(QPainter& target, const QRectF& surface);

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void readOn();
    void goOn();
    void point(QMouseEvent* event, bool held);
    /// Hands the player something, now or when the movie has been read.
    void hand(std::function<void()> input);
    /// After anything that may have changed the movie: asks for a repaint, starts or stops the
    /// timer, and passes commands on.
    void refresh();
    [[nodiscard]] bool canBeSeen() const;
    [[nodiscard]] swf::Matrix placeOn(const QRectF& surface) const;

    std::filesystem::path path;
    /// The file while it is read, and what came of it so far.
    std::optional<std::ifstream> source;
    std::string content;
    std::optional<swf::MovieLoader> loader;
    std::unique_ptr<swf::Player> player;
    std::optional<MoviePainter> painter;
    /// What came before there was a player.
    std::vector<std::function<void()>> inputs;
    QTimer frameTimer;
    QTimer readTimer;
    QTimer redrawTimer;
    /// How often it was drawn again because the time had not been enough.
    int redraws = 0;
    bool stretched = false;
    int frames = 0;
    /// What the last drawing took, in milliseconds.
    qint64 drawingTime = 0;
};

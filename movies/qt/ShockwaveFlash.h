#pragma once

#include "base/Event.h"
#include "movies/player/MovieLoader.h"
#include "movies/player/Player.h"
#include "movies/qt/MoviePainter.h"

#include <QTimer>
#include <QWidget>

#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

/// A control that plays a vector movie from a file. Without a file, or with one that is no movie,
/// it is empty: what is behind it shows, and nothing is said. It asks for time only while it can be
/// seen and something in the movie moves.
class ShockwaveFlash : public QWidget {
public:
    explicit ShockwaveFlash(QWidget* parent = nullptr);
    ~ShockwaveFlash() override;

    /// Plays the file from its beginning. A large one comes in piece by piece.
    void setMovie(const std::filesystem::path& file);
    [[nodiscard]] const std::filesystem::path& Movie() const { return path; }

    /// Whether the file has been read and held nothing to play.
    [[nodiscard]] bool isEmpty() const { return !player && !loader; }

    /// True to stretch the movie over the whole control; else it keeps its shape, as large as fits,
    /// in the middle.
    void setExactFit(bool wanted);
    [[nodiscard]] bool exactFit() const { return stretched; }

    /// Shows the movie a key (of Qt::Key) that went down elsewhere. False when it takes no notice.
    bool key(int code);

    /// The movie tells its host something. The receiver may do anything, such as end this control.
    Event<std::string_view, std::string_view> FSCommand;

    /// Whether time is asked for, to play on or to read on.
    [[nodiscard]] bool isAwake() const { return beat.isActive() || reading.isActive(); }
    /// How often the movie went on by a frame since it was set.
    [[nodiscard]] int framesPlayed() const { return frames; }

    /// Draws the movie as it stands onto a surface.
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
    /// After anything that may have changed the movie: draws it, sleeps or wakes, and tells.
    void settle();
    [[nodiscard]] bool canBeSeen() const;
    [[nodiscard]] swf::Matrix placeOn(const QRectF& surface) const;

    std::filesystem::path path;
    std::optional<swf::MovieLoader> loader;
    std::unique_ptr<swf::Player> player;
    std::optional<MoviePainter> painter;
    QTimer beat;
    QTimer reading;
    bool stretched = false;
    int frames = 0;
    /// What the last drawing took, in milliseconds.
    qint64 drawingTime = 0;
};

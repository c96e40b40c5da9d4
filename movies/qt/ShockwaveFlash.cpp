#include "movies/qt/ShockwaveFlash.h"

#include "movies/player/limits.h"
#include "movies/qt/MovieBrushes.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

namespace {

/// What drawing may take of the time, as a part of it; a movie that takes more drops frames.
constexpr int timeForDrawing = 4;
/// How long a movie is read at once, so that small ones are there; the loop reads on when it comes
/// round again.
constexpr int millisecondsAtOnce = 1;
constexpr int millisecondsToRedraw = 10;
/// How often what rests is drawn again when the time was not enough, each time after twice as long.
constexpr int mostRedraws = 10;
/// How many moves, presses and keys are kept while a movie is read.
constexpr std::size_t mostInputs = 256;

/// How much of a file is read in one step.
constexpr std::size_t bytesPerStep = std::size_t{256} << 10;

/// The open file; nothing for what is no plain file, or is larger than any movie that is played.
std::optional<std::ifstream> opened(const std::filesystem::path& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) return {};
    const auto size = std::filesystem::file_size(path, error);
    if (error || size > swf::limits::fileBytes) return {};
    return std::ifstream(path, std::ios::binary);
}

/// The codes that movies have for keys.
unsigned movieKey(int code) {
    switch (code) {
        case Qt::Key_Left: return 1;
        case Qt::Key_Right: return 2;
        case Qt::Key_Home: return 3;
        case Qt::Key_End: return 4;
        case Qt::Key_Insert: return 5;
        case Qt::Key_Delete: return 6;
        case Qt::Key_Backspace: return 8;
        case Qt::Key_Return:
        case Qt::Key_Enter: return 13;
        case Qt::Key_Up: return 14;
        case Qt::Key_Down: return 15;
        case Qt::Key_PageUp: return 16;
        case Qt::Key_PageDown: return 17;
        case Qt::Key_Tab: return 18;
        case Qt::Key_Escape: return 19;
        default: return code >= 32 && code < 127 ? static_cast<unsigned>(code) : 0;
    }
}

}  // namespace

ShockwaveFlash::ShockwaveFlash(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    frameTimer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&frameTimer, &QTimer::timeout, this, [this] { goOn(); });
    QObject::connect(&readTimer, &QTimer::timeout, this, [this] { readOn(); });
    redrawTimer.setSingleShot(true);
    QObject::connect(&redrawTimer, &QTimer::timeout, this, [this] { update(); });
}

ShockwaveFlash::~ShockwaveFlash() = default;

void ShockwaveFlash::setMovie(const std::filesystem::path& file) {
    path = file;
    frameTimer.stop();
    painter.reset();
    player.reset();
    frames = 0;
    drawingTime = 0;
    inputs.clear();
    loader.reset();
    content.clear();
    source = opened(path);
    const QPointer<ShockwaveFlash> self(this);
    if (!source) Read();
    QElapsedTimer time;
    time.start();
    while (self && isReading() && time.elapsed() < millisecondsAtOnce)
        readOn();
    if (!self) return;
    if (isReading()) {
        readTimer.start(0);
    } else {
        readTimer.stop();
    }
    update();
}

void ShockwaveFlash::readOn() {
    if (source) {
        const std::size_t before = content.size();
        content.resize(before + bytesPerStep);
        source->read(content.data() + before, static_cast<std::streamsize>(bytesPerStep));
        content.resize(before + static_cast<std::size_t>(source->gcount()));
        if (*source && content.size() <= swf::limits::fileBytes) return;
        source.reset();
        loader.emplace(std::exchange(content, {}));
        return;
    }
    if (!loader || loader->step()) return;
    readTimer.stop();
    const std::shared_ptr<const swf::Movie> movie = loader->take();
    loader.reset();
    const QPointer<ShockwaveFlash> self(this);
    const auto kept = std::exchange(inputs, {});
    if (movie->timeline.frameCount() > 0) {
        player = std::make_unique<swf::Player>(movie);
        painter.emplace(movie);
        for (const auto& input : kept)
            input();
        refresh();
    }
    if (self) Read();
}

void ShockwaveFlash::goOn() {
    if (!player) return;
    ++frames;
    player->advance();
    refresh();
}

void ShockwaveFlash::refresh() {
    if (player->takeChange()) {
        redraws = 0;
        update();
    }
    if (!player->moves() || !canBeSeen()) {
        frameTimer.stop();
    } else {
        const double rate =
            std::clamp(player->movie().framesPerSecond, 0.1, swf::limits::framesPerSecond);
        const int wanted = std::max(static_cast<int>(std::lround(1000 / rate)),
                                    static_cast<int>(drawingTime) * timeForDrawing);
        if (!frameTimer.isActive() || frameTimer.interval() != wanted) frameTimer.start(wanted);
    }
    const std::vector<swf::Command> commands = player->takeCommands();
    if (commands.empty()) return;
    // A copy, since the receiver may end this control while it runs.
    const auto notify = FSCommand;
    const QPointer<ShockwaveFlash> self(this);
    for (const swf::Command& command : commands) {
        if (self) notify(command.name, command.arguments);
    }
}

void ShockwaveFlash::setExactFit(bool wanted) {
    stretched = wanted;
    update();
}

bool ShockwaveFlash::key(int code) {
    if (isReading()) {
        hand([this, code] { static_cast<void>(player->key(movieKey(code))); });
        return true;
    }
    if (!player || !player->key(movieKey(code))) return false;
    refresh();
    return true;
}

void ShockwaveFlash::hand(std::function<void()> input) {
    if (player) {
        input();
        refresh();
    } else if (isReading() && inputs.size() < mostInputs) {
        inputs.push_back(std::move(input));
    }
}

swf::Matrix ShockwaveFlash::placeOn(const QRectF& surface) const {
    const swf::Rect& frame = player->movie().frame;
    double across = surface.width() / frame.width();
    double down = surface.height() / frame.height();
    if (!stretched) across = down = std::min(across, down);
    const double left = surface.center().x() - across * frame.width() / 2;
    const double top = surface.center().y() - down * frame.height() / 2;
    return {across, 0, 0, down, left - across * frame.left, top - down * frame.top};
}

void ShockwaveFlash::drawOn(QPainter& target, const QRectF& surface) {
    if (!player || surface.isEmpty()) return;
    QElapsedTimer time;
    time.start();
    const swf::Matrix matrix = placeOn(surface);
    const swf::Rect& frame = player->movie().frame;
    const swf::Point corner = matrix.map({frame.left, frame.top});
    const swf::Point end = matrix.map({frame.right, frame.bottom});
    const QRectF seen(QPointF(corner.x, corner.y), QPointF(end.x, end.y));
    if (const auto& background = player->movie().background) {
        target.fillRect(seen, movieBrushes::color(*background));
    }
    const MoviePainter::Outcome outcome = painter->draw(target, seen, player->stage(), matrix);
    drawingTime = time.elapsed();
    if (!outcome.cut) redraws = 0;
    if (outcome.unfinished) {
        // The next drawing comes later, so that there is time for what makes it ready.
        redrawTimer.start(millisecondsToRedraw);
    } else if (outcome.cut && !frameTimer.isActive() && redraws < mostRedraws) {
        // The machine may only have been busy, and no frame comes that would show the rest.
        redrawTimer.start(millisecondsToRedraw << redraws++);
    }
}

void ShockwaveFlash::paintEvent(QPaintEvent*) {
    QPainter target(this);
    drawOn(target, rect());
}

bool ShockwaveFlash::canBeSeen() const { return isVisible() && !window()->isMinimized(); }

void ShockwaveFlash::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // Only the window itself has the event of being minimised.
    window()->installEventFilter(this);
    if (player) refresh();
}

void ShockwaveFlash::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    frameTimer.stop();
}

bool ShockwaveFlash::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::WindowStateChange && watched == window() && player) refresh();
    return QWidget::eventFilter(watched, event);
}

void ShockwaveFlash::mouseMoveEvent(QMouseEvent* event) {
    point(event, event->buttons().testFlag(Qt::LeftButton));
}

void ShockwaveFlash::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) point(event, true);
}

void ShockwaveFlash::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) point(event, false);
}

void ShockwaveFlash::point(QMouseEvent* event, bool held) {
    hand([this, held, at = event->position()] {
        if (rect().isEmpty()) return;
        player->mouse(placeOn(rect()).mapBack({at.x(), at.y()}), held);
        if (!player->overButton()) {
            unsetCursor();
        } else if (cursor().shape() != Qt::PointingHandCursor) {
            setCursor(Qt::PointingHandCursor);
        }
    });
}

void ShockwaveFlash::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    hand([this] { player->mouseLeft(false); });
}

void ShockwaveFlash::keyPressEvent(QKeyEvent* event) {
    if (!key(event->key())) QWidget::keyPressEvent(event);
}

#include "ui/common/look.h"

#include "platform/qt/qtPlatform.h"
#include "ui/common/Style.h"
#include "ui/common/roles.h"

#include <QApplication>
#include <QFont>
#include <QFontMetricsF>
#include <QIcon>
#include <QIconEngine>
#include <QLinearGradient>
#include <QList>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QPixmapCache>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace look {

namespace {

/// Makes a font narrow enough for the captions with the least room. Liberation Sans is; Tahoma, and
/// what stands in where neither is installed, may be too wide.
void narrow(QFont& font) {
    narrowTo(font, "Copy Selected Item To Clipboard", scaled(162));
    narrowTo(font, "Copy to Clipboard", scaled(89));
    narrowTo(font, "Type <cn> into your message. Remember c = contact, n = nickname.", scaled(336));
}

/// The icon in all its sizes, each of which is a file that Qt reads to learn its size.
QIcon readIcon() {
    QIcon icon;
    for (const char* const size : {"16", "22", "24", "32", "48", "64", "128", "256"}) {
        icon.addFile(QString(":/icons/cobweave-%1.png").arg(size));
    }
    return icon;
}

/// The icon, read when somebody first wants to see it.
class LateIcon final : public QIconEngine {
public:
    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode,
               QIcon::State state) override {
        icon().paint(painter, place, Qt::AlignCenter, mode, state);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return icon().pixmap(size, 1, mode, state);
    }
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return icon().actualSize(size, mode, state);
    }
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override {
        return icon().availableSizes(mode, state);
    }
    bool isNull() override { return false; }
    [[nodiscard]] QIconEngine* clone() const override { return new LateIcon(*this); }

private:
    const QIcon& icon() {
        if (read.isNull()) read = readIcon();
        return read;
    }

    QIcon read;
};

/// Waits for the first widget that is to be shown.
class FirstWidget final : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Polish && watched->isWidgetType()) beforeWindows();
        return false;
    }
};

QObject* firstWidget = nullptr;

/// The size of our letters in pixels: eight points. The places of the controls are made for it.
constexpr int letterSize = 11;
/// What the largest of our windows takes of a screen, in pixels of the design, with its frame.
constexpr QSize largestWindow{580, 480};
double scale = 1;

}  // namespace

void apply() {
    QApplication::setStyle(new Style);

    // Each button of each window adds its pictures to Qt's cache anew, since its palette counts as
    // another one, so the cache grows to its limit. What one window shows fits.
    constexpr int cachedKilobytes = 512;
    QPixmapCache::setCacheLimit(cachedKilobytes);

    const QScreen* const screen = QApplication::primaryScreen();
    followLetters(QApplication::font(), screen != nullptr ? screen->availableSize() : QSize());

    // All colours are ours, whatever theme the desktop has: some texts have a colour that means
    // something, and have to be readable on their ground.
    QPalette palette(window);
    palette.setColor(QPalette::Base, page);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Button, window);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, QColor(112, 124, 146));
    }
    palette.setColor(QPalette::PlaceholderText, hint);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, page);
    QApplication::setPalette(palette);

    QApplication::setWindowIcon(QIcon(new LateIcon));

    roles::apply();
}

double letterScale() { return scale; }

int scaled(int pixels) { return qRound(pixels * scale); }

void followLetters(const QFont& desktop, const QSize& screen) {
    // What desktops have when nobody has changed it is 9 to 11 points.
    constexpr double usualPoints = 11;
    const double most = std::min({2.0, 1.0 * screen.width() / largestWindow.width(),
                                  1.0 * screen.height() / largestWindow.height()});
    const int wanted = qRound(desktop.pointSizeF() / usualPoints * letterSize);
    QFont font(letterFonts());
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(std::max(letterSize, std::min(wanted, static_cast<int>(most * letterSize))));
    // Letters have whole pixels, and what is around them is scaled as they are.
    scale = 1.0 * font.pixelSize() / letterSize;
    QApplication::setFont(font);
    if (firstWidget != nullptr) return;
    firstWidget = new FirstWidget(qApp);
    qApp->installEventFilter(firstWidget);
}

void beforeWindows() {
    if (firstWidget == nullptr) return;
    std::exchange(firstWidget, nullptr)->deleteLater();
    QFont font = QApplication::font();
    narrow(font);
    // Each widget that there is would be notified.
    if (font != QApplication::font()) QApplication::setFont(font);
}

void narrowTo(QFont& font, const QString& text, int width) {
    constexpr int narrowest = 60;
    int stretch = font.stretch() == QFont::AnyStretch ? QFont::Unstretched : font.stretch();
    while (stretch > narrowest && QFontMetricsF(font).horizontalAdvance(text) > width)
        font.setStretch(--stretch);
}

void paintBand(QPainter& painter, const QRectF& place) {
    QLinearGradient ground(place.topLeft(), place.bottomLeft());
    ground.setColorAt(0, page);
    ground.setColorAt(1, bandEnd);
    painter.fillRect(place, ground);
}

void paintFocusRing(QPainter& painter, const QRectF& place) {
    constexpr double width = 1.5;
    constexpr double inside = width / 2;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(accent, width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(place.adjusted(inside, inside, -inside, -inside), 4, 4);
}

}  // namespace look

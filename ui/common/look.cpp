#include "ui/common/look.h"

#include <QApplication>
#include <QFont>
#include <QFontMetrics>
#include <QIcon>
#include <QLinearGradient>
#include <QPainter>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

namespace look {

namespace {

/// Where the font of our choice is not installed, its replacement is made narrow enough for the
/// captions with the least room.
void narrow(QFont& font) {
    constexpr int narrowest = 60;
    const auto width = [&](const char* caption) {
        return QFontMetrics(font).horizontalAdvance(caption);
    };
    for (int stretch = 99; stretch >= narrowest; --stretch) {
        const bool fits =
            width("Copy Selected Item To Clipboard") <= 162 && width("Copy to Clipboard") <= 89;
        if (fits) return;
        font.setStretch(stretch);
    }
}

}  // namespace

void apply() {
    QApplication::setStyle(QStyleFactory::create("Fusion"));

    // The places of the controls are made for this size.
    QFont font("Liberation Sans");
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(11);
    narrow(font);
    QApplication::setFont(font);

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
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, page);
    QApplication::setPalette(palette);

    QIcon icon;
    for (const char* const size : {"16", "22", "24", "32", "48", "64", "128", "256"}) {
        icon.addFile(QString(":/icons/cobweave-%1.png").arg(size));
    }
    QApplication::setWindowIcon(icon);
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

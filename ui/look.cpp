#include "ui/look.h"

#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QLinearGradient>
#include <QPainter>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

namespace look {

void apply() {
    QApplication::setStyle(QStyleFactory::create("Fusion"));

    // The given places of controls are made for this size.
    QFont font("Liberation Sans");
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(11);
    QApplication::setFont(font);

    // All colours are ours, whatever theme the desktop has: some texts have a colour that means
    // something, and they are to be readable on their ground.
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

}  // namespace look

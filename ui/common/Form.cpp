#include "ui/common/Form.h"

#include "platform/qt/waitingBoxes.h"
#include "ui/common/look.h"
#include "ui/common/roles.h"

#include <QCloseEvent>
#include <QKeyEvent>

#include <utility>

Form::Form(const char* caption, int width, int height) {
    look::beforeWindows();
    setWindowTitle(caption);
    resize(look::scaled(pixels(width)), look::scaled(pixels(height)));
    roles::set(*this, QAccessible::Window);
}

void Form::present() {
    // `show` alone would leave a minimized window minimized.
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    waitingBoxes::raiseThatOf(this);
}

void Form::fixSize() {
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    setFixedSize(size());
    roles::set(*this, QAccessible::Dialog);
}

QRect pixels(const Twips& place) {
    const QRect usual(pixels(place.left), pixels(place.top), pixels(place.width),
                      pixels(place.height));
    // Each edge is scaled by itself, so that those of neighbours do not come to overlap.
    const QPoint topLeft(look::scaled(usual.left()), look::scaled(usual.top()));
    const QPoint end(look::scaled(usual.left() + usual.width()),
                     look::scaled(usual.top() + usual.height()));
    return {topLeft, QSize(end.x() - topLeft.x(), end.y() - topLeft.y())};
}

void Form::closeEvent(QCloseEvent* event) {
    event->accept();
    std::exchange(unloaded, [] {})();
}

void Form::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

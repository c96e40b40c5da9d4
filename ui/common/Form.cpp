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
    resize(pixels(width), pixels(height));
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

void Form::followLetters() {
    const double scale = look::letterScale();
    if (scale <= 1) return;
    QFont larger = font();
    larger.setPixelSize(qRound(larger.pixelSize() * scale));
    setFont(larger);
    for (QWidget* const control : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        const QRect place = control->geometry();
        control->setGeometry(QRectF(place.x() * scale, place.y() * scale, place.width() * scale,
                                    place.height() * scale)
                                 .toRect());
    }
    resize(size() * scale);
}

void Form::fixSize() {
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    setFixedSize(size());
    roles::set(*this, QAccessible::Dialog);
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

#include "ui/Form.h"

#include <QKeyEvent>

Form::Form(const char* caption, int width, int height) {
    setWindowTitle(caption);
    resize(pixels(width), pixels(height));
}

void Form::present() {
    // Unlike `show`, this also brings back a window that was made an icon.
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void Form::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

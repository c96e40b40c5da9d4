#include "platform/qt/waitingBoxes.h"

#include <QApplication>
#include <QMessageBox>

namespace {

/// One that is minimized with its window comes back.
void bringToFront(QWidget& box) {
    if (QWidget* const owner = box.parentWidget()) {
        owner->setWindowState(owner->windowState() & ~Qt::WindowMinimized);
        owner->raise();
    }
    box.raise();
    box.activateWindow();
}

}  // namespace

void waitingBoxes::raise() {
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && qobject_cast<QMessageBox*>(window) != nullptr) {
            bringToFront(*window);
        }
    }
}

QMessageBox* waitingBoxes::raiseThatOf(const QWidget* window) {
    if (window == nullptr) return nullptr;
    for (QMessageBox* const box :
         window->findChildren<QMessageBox*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (!box->isVisible()) continue;
        bringToFront(*box);
        return box;
    }
    return nullptr;
}

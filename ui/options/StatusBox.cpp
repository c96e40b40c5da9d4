#include "ui/options/StatusBox.h"

#include <QCompleter>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>

StatusBox::StatusBox(QWidget* parent) : QComboBox(parent) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
}

void StatusBox::keyPressEvent(QKeyEvent* event) {
    // A key that is a character is discarded, also one such as backspace or Ctrl+V.
    if (!event->text().isEmpty() && event->key() != Qt::Key_Delete) return;
    QComboBox::keyPressEvent(event);
}

void StatusBox::inputMethodEvent(QInputMethodEvent* event) { event->accept(); }

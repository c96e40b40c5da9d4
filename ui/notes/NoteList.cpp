#include "ui/notes/NoteList.h"

#include <QMouseEvent>

int NoteList::selectedRow() const {
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

QItemSelectionModel::SelectionFlags NoteList::selectionCommand(const QModelIndex& index,
                                                               const QEvent* event) const {
    if (!index.isValid()) return QItemSelectionModel::NoUpdate;
    const auto command = QListWidget::selectionCommand(index, event);
    return command.testFlag(QItemSelectionModel::Deselect) ? QItemSelectionModel::NoUpdate
                                                           : command;
}

void NoteList::mousePressEvent(QMouseEvent* event) {
    isEntryPressed = indexAt(event->position().toPoint()).isValid();
    QListWidget::mousePressEvent(event);
}

void NoteList::mouseReleaseEvent(QMouseEvent* event) {
    QListWidget::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && isEntryPressed && selectedRow() >= 0) Click();
}

void NoteList::keyPressEvent(QKeyEvent* event) {
    const int before = selectedRow();
    QListWidget::keyPressEvent(event);
    if (selectedRow() != before && selectedRow() >= 0) Click();
}

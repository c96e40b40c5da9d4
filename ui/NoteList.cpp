#include "ui/NoteList.h"

#include <QMouseEvent>

int NoteList::selectedRow() const {
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void NoteList::mouseReleaseEvent(QMouseEvent* event) {
    QListWidget::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && selectedRow() >= 0) Click();
}

void NoteList::keyPressEvent(QKeyEvent* event) {
    const int before = selectedRow();
    QListWidget::keyPressEvent(event);
    if (selectedRow() != before && selectedRow() >= 0) Click();
}

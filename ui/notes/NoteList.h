#pragma once

#include "base/Event.h"

#include <QListWidget>

/// A list that tells when its user has chosen an entry, by mouse or key, also the same one again.
class NoteList : public QListWidget {
public:
    Event<> Click;

    using QListWidget::QListWidget;

    /// -1 when no entry is selected. An entry that only has the keyboard's frame is not.
    [[nodiscard]] int selectedRow() const;

protected:
    /// What is selected stays so until another entry is.
    [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(
        const QModelIndex& index, const QEvent* event) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool isEntryPressed = false;
};

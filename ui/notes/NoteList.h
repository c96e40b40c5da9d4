#pragma once

#include "base/Event.h"

#include <QListWidget>

/// A list of which one entry at most is selected; only choosing another one changes that.
class NoteList : public QListWidget {
public:
    /// The user has chosen an entry, by mouse or key, perhaps the same one again.
    Event<> Click;

    using QListWidget::QListWidget;

    /// -1 when no entry is selected. The current one, which has the focus frame, may not be.
    [[nodiscard]] int selectedRow() const;

protected:
    [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(
        const QModelIndex& index, const QEvent* event) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool isEntryPressed = false;
};

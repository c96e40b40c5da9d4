#pragma once

#include "base/Event.h"
#include "ui/common/Form.h"
#include "ui/common/labels.h"
#include "ui/common/lists.h"

#include <QGroupBox>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>

#include <cstddef>
#include <string>

class MessageBox;
class NotesStore;

/// A list of which one entry at most is selected; only choosing another one changes that.
class NoteList : public Hinted<QListWidget> {
public:
    /// The user has chosen an entry, by mouse or key, perhaps the same one again.
    Event<> Click;

    using Hinted::Hinted;

    /// The row of the selected entry; -1 without one. The current entry, which has the focus frame,
    /// need not be selected.
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

/// The window in which notes are read, changed and removed. New ones come by chat command only.
/// Closing saves the notes and hides the window.
class frmnotes final : public Form {
public:
    /// A hidden window with all notes, which follows when notes are added. Both have to outlive it.
    frmnotes(NotesStore& notes, MessageBox& messageBox);
    ~frmnotes() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* control, QEvent* event) override;

private:
    void layOut();
    void addEntry(const std::string& note);
    void removeEntry(std::size_t index);
    void selectionMayHaveChanged();
    void showSelected();
    void saveAndHide();
    void List1_Click();
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();

    NotesStore& notes;
    MessageBox& messageBox;
    RowDelegate rowDelegate;
    Banner banner{this};
    QGroupBox Frame1{"Select A Note", this};
    NoteList List1{&Frame1};
    QGroupBox Frame2{"Edit/Delete/View Note", this};
    QPlainTextEdit Text1{&Frame2};
    QPushButton Command1{"&Save Changes", this};
    QPushButton Command2{"&Remove Note", this};
    QPushButton Command3{"&Close", this};
    /// The entry that `Text1` was filled from. A removal does not change it, so that until the next
    /// click it may be another note's.
    std::size_t selectedNote = 0;
    /// What `Text1` was last filled with.
    std::string shownNote;
    /// A key was pressed in `Text1` since it was last filled or saved.
    bool noteChanged = false;
};

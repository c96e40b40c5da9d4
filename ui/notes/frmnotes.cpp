#include "ui/notes/frmnotes.h"

#include "platform/MessageBox.h"
#include "stores/NotesStore.h"
#include "ui/common/look.h"
#include "ui/common/shownText.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr std::size_t longNote = 4096;
constexpr auto saveQuestion = "Do you want to save changes to your current note?";

/// Keys that type nothing by themselves, such as the first one of a mnemonic, and those that the
/// window handles: Escape, which closes it, and Tab, which goes to another control.
bool typesNothing(int key) {
    constexpr std::array keys{Qt::Key_Shift,   Qt::Key_Control, Qt::Key_Alt,     Qt::Key_AltGr,
                              Qt::Key_Meta,    Qt::Key_Super_L, Qt::Key_Super_R, Qt::Key_CapsLock,
                              Qt::Key_NumLock, Qt::Key_Escape,  Qt::Key_Tab,     Qt::Key_Backtab};
    return std::ranges::find(keys, key) != keys.end();
}

/// Whether the event is that of a key pressed in a text box. Letters that are composed of several
/// keys, such as accented and Chinese ones, come as input methods' events.
bool isTyping(const QEvent& event) {
    if (event.type() == QEvent::InputMethod) {
        return !static_cast<const QInputMethodEvent&>(event).commitString().isEmpty();
    }
    return event.type() == QEvent::KeyPress &&
           !typesNothing(static_cast<const QKeyEvent&>(event).key());
}

void fill(QGroupBox& frame, QWidget& content) {
    auto* const layout = new QVBoxLayout(&frame);
    layout->setContentsMargins(look::gap, look::gap, look::gap, look::gap);
    layout->addWidget(&content);
}

}  // namespace

int NoteList::selectedRow() const {
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

QItemSelectionModel::SelectionFlags NoteList::selectionCommand(const QModelIndex& index,
                                                               const QEvent* event) const {
    if (!index.isValid()) return QItemSelectionModel::NoUpdate;
    const auto command = Hinted::selectionCommand(index, event);
    return command.testFlag(QItemSelectionModel::Deselect) ? QItemSelectionModel::NoUpdate
                                                           : command;
}

void NoteList::mousePressEvent(QMouseEvent* event) {
    isEntryPressed = indexAt(event->position().toPoint()).isValid();
    Hinted::mousePressEvent(event);
}

void NoteList::mouseReleaseEvent(QMouseEvent* event) {
    Hinted::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && isEntryPressed && selectedRow() >= 0) Click();
}

void NoteList::keyPressEvent(QKeyEvent* event) {
    const int before = selectedRow();
    Hinted::keyPressEvent(event);
    if (selectedRow() != before && selectedRow() >= 0) Click();
}

frmnotes::frmnotes(NotesStore& notes, MessageBox& messageBox)
    : Form("Cobweave - Notes", 6360, 6000), notes(notes), messageBox(messageBox) {
    layOut();
    Text1.setTabChangesFocus(true);
    Text1.installEventFilter(this);
    List1.setUniformItemSizes(true);
    List1.setItemDelegate(&rowDelegate);
    List1.setHint(
        "There are no notes yet. Type \"!note\" and a text into a conversation window to add one.");
    Text1.setPlaceholderText("Select a note above to read or to change it.");
    List1.Click = [this] { List1_Click(); };
    connect(&List1, &QListWidget::itemSelectionChanged, this,
            [this] { selectionMayHaveChanged(); });
    connect(&Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connect(&Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
    connect(&Command3, &QPushButton::clicked, this, [this] { Command3_Click(); });

    for (const std::string& note : notes.list())
        addEntry(note);
    selectionMayHaveChanged();
    notes.added = [this] { addEntry(this->notes.list().back()); };
}

frmnotes::~frmnotes() { notes.added = {}; }

void frmnotes::layOut() {
    const std::pair<QWidget&, const char*> names[] = {
        {List1, "List1"},       {Text1, "Text1"},       {Command1, "Command1"},
        {Command2, "Command2"}, {Command3, "Command3"},
    };
    for (const auto& [control, name] : names)
        control.setObjectName(name);
    List1.setAccessibleName(Frame1.title());
    Text1.setAccessibleName(Frame2.title());

    banner.setText("Notes");
    banner.setFixedHeight(look::scaled(60));
    fill(Frame1, List1);
    fill(Frame2, Text1);
    for (QPushButton* const button : {&Command1, &Command2, &Command3}) {
        button->setMinimumSize(QSize(96, 25) * look::letterScale());
    }
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(&Command1);
    buttons->addWidget(&Command2);
    buttons->addStretch();
    buttons->addWidget(&Command3);
    auto* const content = new QVBoxLayout;
    content->setContentsMargins(look::gap, look::gap, look::gap, look::gap);
    content->setSpacing(look::gap);
    content->addWidget(&Frame1, 1);
    content->addWidget(&Frame2, 1);
    content->addLayout(buttons);
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    all->addWidget(&banner);
    all->addLayout(content);
}

void frmnotes::addEntry(const std::string& note) { List1.addItem(shownLine(note)); }

void frmnotes::selectionMayHaveChanged() { Text1.setEnabled(List1.selectedRow() >= 0); }

void frmnotes::removeEntry(std::size_t index) {
    notes.remove(index);
    const bool wasSelected = List1.selectedRow() == static_cast<int>(index);
    delete List1.takeItem(static_cast<int>(index));
    // Qt would select the next entry, which nobody has chosen.
    if (wasSelected) List1.setCurrentRow(-1);
}

void frmnotes::List1_Click() {
    if (!noteChanged) {
        showSelected();
        return;
    }
    messageBox.question(winId(), saveQuestion, [this](bool yes) {
        if (yes) Command1_Click();
        noteChanged = false;
        showSelected();
    });
}

void frmnotes::showSelected() {
    const int row = List1.selectedRow();
    // Where the clicked entry was the one in the box, saving has just removed it from its place.
    if (row < 0) return;
    selectedNote = static_cast<std::size_t>(row);
    const std::string& note = shownNote = notes.list()[selectedNote];
    // Looking for words in a text without blanks takes time that grows with the square of its
    // length.
    Text1.setWordWrapMode(note.size() > longNote ? QTextOption::WrapAnywhere
                                                 : QTextOption::WrapAtWordBoundaryOrAnywhere);
    Text1.setPlainText(editableText(note));
}

void frmnotes::Command1_Click() {
    if (List1.selectedRow() < 0) {
        messageBox.exclamation(winId(), "Please select a note to edit.");
        return;
    }
    // The note in the box may have been removed since, as the last one of the list.
    if (selectedNote >= notes.list().size()) return;
    const QString shown = Text1.document()->toRawText();
    // What nobody has changed keeps its bytes, in whichever code they are.
    const std::string text = shown == editableText(shownNote) ? shownNote : bytesOfEditable(shown);
    removeEntry(selectedNote);
    notes.add(text);
    Text1.clear();
    noteChanged = false;
    notes.savenotes();
}

void frmnotes::Command2_Click() {
    if (List1.selectedRow() < 0) {
        messageBox.exclamation(winId(), "Please select a note to remove.");
        return;
    }
    messageBox.question(winId(), "Are you sure you want to remove this note?", [this](bool yes) {
        const int row = List1.selectedRow();
        if (!yes || row < 0) return;
        removeEntry(static_cast<std::size_t>(row));
        Text1.clear();
        notes.savenotes();
    });
}

void frmnotes::Command3_Click() {
    if (!noteChanged) {
        saveAndHide();
        return;
    }
    messageBox.question(winId(), saveQuestion, [this](bool yes) {
        if (yes) Command1_Click();
        saveAndHide();
    });
}

void frmnotes::saveAndHide() {
    hide();
    notes.savenotes();
}

void frmnotes::closeEvent(QCloseEvent* event) {
    event->ignore();
    Command3_Click();
}

bool frmnotes::eventFilter(QObject* control, QEvent* event) {
    if (isTyping(*event)) noteChanged = true;
    return Form::eventFilter(control, event);
}

#include "ui/options/frmoptions.h"

#include "desktop/frmTitle.h"
#include "desktop/mdlFunctions.h"
#include "platform/Client.h"
#include "platform/Clock.h"
#include "platform/ForeignWindows.h"
#include "platform/MessageBox.h"
#include "platform/Registry.h"
#include "platform/qt/text.h"
#include "ui/common/look.h"
#include "ui/common/roles.h"
#include "ui/common/shownText.h"
#include "ui/options/optionPictures.h"
#include "ui/options/optionsDesign.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QWindow>

#include <utility>

frmoptions::frmoptions(const Parts& parts) : PagedForm(optionsDesign::window), parts(parts) {
    addTexts();
    connectControls();
    playMovies();
    copyTitle();
    if (!mdlFunctions::MessengerPlusPresent(parts.registry)) {
        Picture3.hide();
        Picture3.heading.hide();
    }
    showOptions();
    Check1_Click();
    showSample();
    Text1.setCursorPosition(static_cast<int>(Text1.text().size()));
}

void frmoptions::addTexts() {
    for (const auto& [index, captions] : optionsDesign::captions)
        addCaptions(page(index), captions);
    const std::pair<QAbstractButton&, const char*> headings[] = {
        {Check1, "Sign In Progress"},
        {Check2, "Timestamp Messages"},
        {Check3, "Window Rename"},
        {mw, "Show in"},
        {ti, "Show in"},
        {fn, "Label Contact By"},
        {address, "Label Contact By"},
        {red, "Color"},
        {black, "Color"},
    };
    for (const auto& [control, heading] : headings)
        nameAfter(heading, control);
    const std::pair<QWidget&, const char*> tips[] = {
        {fn, "Alerts name contacts by their nick names."},
        {address, "Alerts name contacts by their addresses."},
        {Check1, "Shows how far a sign-in has come, in the places below."},
        {mw, "Shows it in the title bar of Messenger's main window."},
        {ti, "Shows it when the mouse rests on Cobweave's icon in the notification area."},
        {Check2, "Puts the time behind what your contacts say."},
        {Check3, "Gives Messenger's main window a title of your own, at once."},
        {Text1, "The title. It takes effect while you type; Cancel does not take it back."},
    };
    for (const auto& [control, tip] : tips)
        control.setToolTip(tip);
    const QString words = toQString(parts.howToConnect);
    setBannerTip(words);
    setAccessibleDescription(words);
    Text1.setAccessibleName("Window Caption");
    roles::decorate(ShockwaveFlash1);
    for (const mdlFunctions::Status& status : mdlFunctions::statuses)
        Combo1.addItem(toQString(status.name));
    Text1.setMaxLength(100);

    mwi.setDrawing(optionPictures::paintMessengerWindow, optionPictures::placeGround);
    tii.setDrawing(optionPictures::paintToolTip, optionPictures::placeGround);
    Image15.setDrawing(optionPictures::paintWindow, optionPictures::windowGround);
    mwi.hide();
    tii.hide();
    Label11.setTextFormat(Qt::PlainText);
}

void frmoptions::connectControls() {
    connect(&Check1, &QCheckBox::toggled, this, [this] { Check1_Click(); });
    connect(&Check3, &QCheckBox::toggled, this, [this] { Check3_Click(); });
    for (QLineEdit* const bracket :
         {static_cast<QLineEdit*>(&prefix), static_cast<QLineEdit*>(&postfix)}) {
        connect(bracket, &QLineEdit::textChanged, this, [this] { showSample(); });
    }
    for (QAbstractButton* const button :
         {static_cast<QAbstractButton*>(&red), static_cast<QAbstractButton*>(&Check2)}) {
        connect(button, &QAbstractButton::toggled, this, [this] { showSample(); });
    }
    connect(&Text1, &QLineEdit::textChanged, this, [this] { Text1_Change(); });
    connect(&Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connect(&Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
    // The Enter key presses them, too, when they have the focus.
    Command1.setAutoDefault(true);
    Command2.setAutoDefault(true);
    for (QWidget* const place : {static_cast<QWidget*>(&mw), static_cast<QWidget*>(&ti), page(1)}) {
        place->setMouseTracking(true);
        place->installEventFilter(this);
    }
}

void frmoptions::playMovies() {
    const std::pair<ShockwaveFlash&, const char*> movies[] = {
        {generaloptions, "generaloptions.swf"}, {signingin, "signingin.swf"},
        {tsmessages, "tsmessages.swf"},         {alerts, "alerts.swf"},
        {windowrename, "windowrename.swf"},
    };
    for (const auto& [control, file] : movies) {
        control.setExactFit(true);
        control.setMovie(folders::movie(file));
        // It is the page's title.
        roles::set(control, QAccessible::StaticText);
        control.setAccessibleName(control.parentWidget()->accessibleName());
    }
}

/// Each change counts as one by the user, so the handlers run here as well.
void frmoptions::copyTitle() {
    Check3.setChecked(parts.title.renaming());
    Text1.setText(toQString(parts.title.renameText()));
    Text1.setEnabled(parts.title.renaming());
    if (!parts.title.renaming()) resetTitle();
}

void frmoptions::resetTitle() {
    parts.title.setText1(ForeignWindows::messengerTitle);
    Text1.setText(toQString(ForeignWindows::messengerTitle));
    Text1.setEnabled(false);
}

void frmoptions::showOptions() {
    for (const OptionRow& row : rows)
        row.show(parts.settings);
    // The prefix alone decides here. A lone postfix is completed by OK.
    if (prefix.text().isEmpty()) completePair();
}

void frmoptions::completePair() {
    if (!prefix.text().isEmpty() && !postfix.text().isEmpty()) return;
    prefix.setText(options::usualPrefix);
    postfix.setText(options::usualPostfix);
}

/// What a contact's text will look like, with the pair that OK would save.
void frmoptions::showSample() {
    const bool isPair = !prefix.text().isEmpty() && !postfix.text().isEmpty();
    const QString time = (isPair ? prefix.text() : options::usualPrefix) +
                         toQString(parts.clock.timeText()) +
                         (isPair ? postfix.text() : options::usualPostfix);
    QString shown = "Hello";
    if (Check2.isChecked() && Picture3.isHidden()) {
        shown += ' ' + time.toHtmlEscaped();
    } else if (Check2.isChecked()) {
        const QColor color = red.isChecked() ? look::alert : QColor(Qt::black);
        shown += " <b style=\"color:" + color.name() + "\">" + time.toHtmlEscaped() + "</b>";
    }
    sample.setTextFormat(Qt::RichText);
    sample.setText(shown);
}

/// In the middle of what the desktop's panels leave, with the frame as far as it is known.
void frmoptions::center() {
    const QMargins frame = windowHandle()->frameMargins();
    QRect place = QRect(QPoint(), size()) + frame;
    place.moveCenter(screen()->availableGeometry().center());
    windowHandle()->setPosition((place - frame).topLeft());
}

void frmoptions::showEvent(QShowEvent* event) {
    PagedForm::showEvent(event);
    if (isCentered) return;
    windowHandle()->installEventFilter(this);
    center();
}

void frmoptions::Check1_Click() {
    mw.setEnabled(Check1.isChecked());
    ti.setEnabled(Check1.isChecked());
}

/// Takes effect at once; Cancel does not undo it.
void frmoptions::Check3_Click() {
    parts.title.setCheck1(Check3.isChecked());
    parts.title.Check1_Click();
    parts.title.savesettings();
    if (parts.title.renaming()) {
        Text1.setEnabled(true);
    } else {
        resetTitle();
    }
}

void frmoptions::Text1_Change() {
    parts.title.setText1(fromQString(Text1.text()));
    parts.title.ChangeTitle();
    Label11.setText(shownLine(fromQString(Text1.text())));
}

void frmoptions::Command1_Click() { close(); }

void frmoptions::Command2_Click() {
    // Assistive programs can press buttons while a box is open.
    if (isSaving) return;
    completePair();
    if (!mdlFunctions::isStatusName(fromQString(Combo1.currentText()))) {
        parts.messageBox.critical(winId(), "Please select an inital sign in status.", {});
        return;
    }
    for (const OptionRow& row : rows)
        row.save(parts.settings);
    if (!RestartMessenger) {
        parts.title.savesettings();
        close();
        return;
    }
    isSaving = true;
    // The window refuses to close, and says so before the client is closed.
    refuse([this] { restartMessenger(); });
}

void frmoptions::refuse(const Event<>& answered) {
    parts.messageBox.critical(winId(), "Please select some settings before running Cobweave",
                              answered);
}

/// Each step waits for the user. Where the program ends instead, the next one never comes: a client
/// that is started then would find no proxy.
void frmoptions::restartMessenger() {
    parts.windows.requestMessengerEnd();
    parts.messageBox.information(
        winId(),
        "You are about to be signed out of MSN Messenger.\r\n\r\n"
        "Please click \"OK\" once you are fully signed out of MSN Messenger.",
        [this] {
            parts.client.start();
            parts.messageBox.question(winId(),
                                      "This is your first time using Cobweave.\r\n\r\n"
                                      "Would you like to view the help dialog to understand \r\n"
                                      "all of Cobweave's Features?",
                                      [this](bool yes) {
                                          if (yes) parts.showHelp();
                                          RestartMessenger = false;
                                          isSaving = false;
                                          parts.title.savesettings();
                                      });
        });
}

void frmoptions::closeEvent(QCloseEvent* event) {
    if (RestartMessenger) {
        event->ignore();
        refuse({});
        return;
    }
    PagedForm::closeEvent(event);
}

/// A key that no control has handled does nothing but Escape, which is as Cancel; nor does that on
/// a first run, which it cannot end.
void frmoptions::keyPressEvent(QKeyEvent* event) {
    event->accept();
    if (event->key() == Qt::Key_Escape && !RestartMessenger) close();
}

void frmoptions::keyReleaseEvent(QKeyEvent* event) { event->accept(); }

bool frmoptions::eventFilter(QObject* control, QEvent* event) {
    if (control == windowHandle()) {
        // What can be seen has its frame; before, a window manager may not have made it.
        if (event->type() == QEvent::Expose && !std::exchange(isCentered, true)) center();
        return false;
    }
    auto* const place = static_cast<QWidget*>(control);
    // A disabled check box does not react to the mouse: its page does.
    if (event->type() != QEvent::MouseMove || !place->isEnabled()) return false;
    mwi.setVisible(place == &mw);
    tii.setVisible(place == &ti);
    // An event that a check box does not handle would go on to the page.
    const bool isHeld = static_cast<QMouseEvent*>(event)->buttons() != Qt::NoButton;
    return place != page(1) && !isHeld;
}

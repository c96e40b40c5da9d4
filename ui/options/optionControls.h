#pragma once

#include "ui/common/Form.h"
#include "ui/common/labels.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

/// A switch: a knob and one word, which a click or the space bar changes. Its state is the colour
/// of its text, as its palette has it, and nothing else.
class Toggle : public QAbstractButton {
public:
    explicit Toggle(QWidget* parent);

    /// What it switches, as assistive programs read it out.
    void setHeading(const QString& newHeading);

    /// Black "Enabled", or red "Disabled".
    void setOn(bool on);
    [[nodiscard]] bool isOn() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void name();

    QString heading;
};

/// A list to choose from. Code and the clipboard can give it a text that is not in the list; typing
/// cannot.
class StatusBox : public QComboBox {
public:
    explicit StatusBox(QWidget* parent);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    /// Letters that an input method composes are typed, too.
    void inputMethodEvent(QInputMethodEvent* event) override;
};

/// A box for one character, of those that are one byte in the code page: the room that a stamp has
/// for each of its brackets. Its tool-tip comes up when anything else is typed.
class BracketBox : public QLineEdit {
public:
    explicit BracketBox(QWidget* parent);
};

/// The ground of buttons of which one is chosen.
class Choice : public QWidget {
public:
    explicit Choice(QWidget* parent);
};

/// One of the buttons of which one is chosen. The Tab key comes to the chosen one, the arrow keys
/// go on to the others.
class ChoiceButton : public QRadioButton {
public:
    explicit ChoiceButton(QWidget* parent);
};

/// The box of the title that takes effect while it is typed.
class TitleBox : public QLineEdit {
public:
    using QLineEdit::QLineEdit;

protected:
    void focusInEvent(QFocusEvent* event) override;
};

/// The heading that a control stands beside or below.
struct Heading {
    const char* name;
    Twips place;
    const char* text;
    /// What the control does, in a sentence, for those who rest the mouse on either.
    const char* tip = "";
};

/// Names a control for assistive programs by its heading.
void nameAfter(const QString& heading, QWidget& control);
void nameAfter(const QString& heading, QAbstractButton& control);
void nameAfter(const QString& heading, Toggle& control);
void nameAfter(const QString& heading, StatusBox& control);

/// A control with its heading.
template <typename Control>
class Headed : public Placed<Control> {
public:
    Headed(QWidget* page, const char* name, Twips place, const Heading& design)
        : Placed<Control>(page, name, place),
          heading(page, design.name, design.place, design.text) {
        heading.setHeading(true);
        heading.setBuddy(this);
        // It is read out before the control.
        heading.stackUnder(this);
        nameAfter(heading.text(), *this);
        heading.setToolTip(design.tip);
        this->setToolTip(design.tip);
    }

    /// Shows the heading, and brings the keyboard to the control.
    Placed<TextLabel> heading;
};

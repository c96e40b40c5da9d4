#pragma once

#include <QAbstractButton>
#include <QComboBox>

/// A switch that is one word: a click or the space bar changes it. Its state is the colour of its
/// text and nothing else.
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

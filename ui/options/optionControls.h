#pragma once

#include <QAbstractButton>
#include <QComboBox>

/// A word that is a switch: a click, or the space bar, changes it. Its state is nothing but the
/// colour of its text.
class Toggle : public QAbstractButton {
public:
    explicit Toggle(QWidget* parent);

    /// What it switches, for assistive programs.
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

/// A list to choose from. Its text can also be none of the list, as it was set or pasted; it cannot
/// be typed.
class StatusBox : public QComboBox {
public:
    explicit StatusBox(QWidget* parent);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    /// What an input method has put together is typed, too.
    void inputMethodEvent(QInputMethodEvent* event) override;
};

#pragma once

#include <QComboBox>

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

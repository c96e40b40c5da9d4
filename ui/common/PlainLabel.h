#pragma once

#include <QWidget>

#include <string>
#include <string_view>

/// A transparent label for text that peers have sent: shown as it is, whatever it holds, and
/// wrapped where it must be. What does not fit is cut off.
class PlainLabel : public QWidget {
public:
    using QWidget::QWidget;

    void setText(std::string_view newText);
    [[nodiscard]] const std::string& text() const { return whole; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::string whole;
    QString shown;
};

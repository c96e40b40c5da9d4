#pragma once

#include "base/Event.h"
#include "ui/common/Form.h"
#include "ui/common/labels.h"

#include <QLabel>

#include <cstdint>
#include <memory>

class EventLoop;
class OwnWindows;
class Timer;

/// The close box of a toast. Without a picture the ground of the toast shows through.
class CloseBox : public QWidget {
public:
    using QWidget::QWidget;

    void setHovered(bool value);
    [[nodiscard]] bool hovered() const { return isHovered; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool isHovered = false;
};

/// A toast: a small window that shows one text for seven seconds above all others and never takes
/// the keyboard.
class frmpopup final : public QWidget {
public:
    /// The window has faded out and is free. Destroy it later, since one of its own events runs.
    Event<> unloaded;

    frmpopup(EventLoop& loop, OwnWindows& windows);
    ~frmpopup() override;

    Placed<PlainLabel> Label1{this, "Label1", {120, 600, 2550, 975}};
    Placed<QLabel> Label2{this, "Label2", {1350, 390, 1335, 255}, "Copy to Clipboard"};
    Placed<CloseBox> Image1{this, "Image1", {2445, 105, 210, 240}};
    std::unique_ptr<Timer> Timer1;
    std::unique_ptr<Timer> Timer2;

    /// Stays invisible for 200 ms more and is there at once then.
    void FadeIn() const;
    void FadeOut();
    void Unload();

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* control, QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void Timer2_Timer();
    void Label2_Click();
    void setOpacity(std::int16_t percentage);

    OwnWindows& windows;
    bool isUnloaded = false;
};

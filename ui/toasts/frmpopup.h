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

/// The close box of a toast, which lights up under the mouse. The toast itself paints its cross.
class CloseBox : public QWidget {
public:
    using QWidget::QWidget;

    /// Whether it is lit up.
    void setHovered(bool value);
    [[nodiscard]] bool hovered() const { return isHovered; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool isHovered = false;
};

/// A toast: a small window that shows one text for seven seconds in front of all others and never
/// takes the keyboard focus.
class frmpopup final : public QWidget {
public:
    /// The toast has ended. One of its own events is still running, so destroy it later.
    Event<> unloaded;

    /// The toast's time begins now, and it fades in by itself. `loop` and `windows` outlive it.
    frmpopup(EventLoop& loop, OwnWindows& windows);
    ~frmpopup() override;

    /// The text, the link that copies it, and the box that closes the toast.
    Placed<PlainLabel> Label1{this, "Label1", {120, 600, 2550, 975}};
    Placed<QLabel> Label2{this, "Label2", {1350, 390, 1335, 255}, "Copy to Clipboard"};
    Placed<CloseBox> Image1{this, "Image1", {2445, 105, 210, 240}};
    /// The timers of the toast's seven seconds and of its fading in.
    std::unique_ptr<Timer> Timer1;
    std::unique_ptr<Timer> Timer2;

    /// Makes the window appear 200 ms from now, all at once.
    void FadeIn() const;
    /// Makes the window invisible in eight steps, which take no time.
    void FadeOut();
    /// Ends the toast: fades it out, hides it and raises `unloaded`. Does nothing the second time.
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

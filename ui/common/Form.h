#pragma once

#include "base/Event.h"
#include "ui/common/twips.h"

#include <QWidget>

/// A window of the program. Escape closes it as its close box does.
class Form : public QWidget {
public:
    /// The window has been closed; comes once. One of the window's own events is still running, so
    /// destroy it later.
    Event<> unloaded;

    /// `width` and `height` are those of the client area as it is designed, in twips.
    Form(const char* caption, int width, int height);

    /// Shows the window in front of the others and gives it the keyboard focus, also when it is
    /// shown already. A box of its own that waits for its answer stays in front.
    void present();

protected:
    /// The window keeps its size: its edges cannot be dragged, and it cannot be maximized or
    /// minimized.
    void fixSize();

    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

/// The pixels of a place, at the scale of the windows.
[[nodiscard]] QRect pixels(const Twips& place);

/// A control at its place. Its name is that of the member that it is, by which tests find it.
template <typename Control>
class Placed : public Control {
public:
    /// A control in `parent`, at `place` of its client area. `name` becomes the object name.
    Placed(QWidget* parent, const char* name, Twips place) : Control(parent) {
        this->setObjectName(name);
        this->setGeometry(pixels(place));
    }
    /// The same with `caption` as its text.
    Placed(QWidget* parent, const char* name, Twips place, const char* caption)
        : Placed(parent, name, place) {
        this->setText(caption);
    }
};

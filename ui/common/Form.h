#pragma once

#include "base/Event.h"
#include "ui/common/twips.h"

#include <QWidget>

/// A window of the program. Escape closes it as its close box does.
class Form : public QWidget {
public:
    /// The window has been closed; comes once. Destroy it later, since one of its own events
    /// runs.
    Event<> unloaded;

    /// The client area is given in twips.
    Form(const char* caption, int width, int height);

    /// Shows the window, above others and with the keyboard, also when it is shown already. A box
    /// that is waiting for its answer stays in front.
    void present();

protected:
    /// The window keeps its size: it has neither an edge to draw at nor the boxes that would make
    /// it large or small.
    void fixSize();

    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

/// A control at its place. Its name is that of the member that it is; tests find it by that.
template <typename Control>
class Placed : public Control {
public:
    Placed(QWidget* parent, const char* name, Twips place) : Control(parent) {
        this->setObjectName(name);
        this->setGeometry(pixels(place.left), pixels(place.top), pixels(place.width),
                          pixels(place.height));
    }
    Placed(QWidget* parent, const char* name, Twips place, const char* caption)
        : Placed(parent, name, place) {
        this->setText(caption);
    }
};

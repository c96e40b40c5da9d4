#pragma once

#include "base/Event.h"
#include "movies/qt/ShockwaveFlash.h"
#include "platform/Folders.h"
#include "ui/common/Form.h"
#include "ui/common/pictures.h"

#include <QAbstractButton>
#include <QLabel>

#include <filesystem>
#include <string_view>

/// Shows, above all else in a control, that it has the keyboard focus. The mouse goes through.
class FocusRing : public QWidget {
public:
    /// A hidden ring on top of `control`, whose size it has to be given.
    explicit FocusRing(QWidget* control);

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// A button whose face is a movie. The movie reacts to the mouse and reports a press; keys are
/// handed to it. Caption and icon are laid over it. Without its movie there is no button: nothing
/// is drawn and nothing can be pressed.
class FlashButton : public QAbstractButton {
public:
    /// What the design of a window holds for a button.
    struct Properties {
        Drawing Icon = nullptr;
        QString Caption = "Caption";
        bool whiteBG = false;
    };

    /// The button was pressed, by mouse or key.
    Event<> Click;
    /// The property of this name was written and is to be saved with the design.
    Event<std::string_view> PropertyChanged;

    /// A button with the movie that came with the program, or with one of the caller's choice.
    explicit FlashButton(QWidget* parent) : FlashButton(parent, folders::movie("button.swf")) {}
    FlashButton(QWidget* parent, const std::filesystem::path& movie);

    /// The text on the button. Blanks at its head leave room for the icon.
    [[nodiscard]] const QString& Caption() const { return properties.Caption; }
    void setCaption(const QString& caption);
    /// The small picture on the button; a null pointer is none.
    [[nodiscard]] Drawing Icon() const { return properties.Icon; }
    void setIcon(Drawing icon);
    /// Changes the picture that is seen, and leaves the property.
    void setButtonIcon(Drawing icon);
    /// Whether the ground is white. Asking for it makes it so where it is true.
    [[nodiscard]] bool whiteBG();
    /// Makes the ground white. False changes the property alone: the ground stays as it is.
    void setWhiteBG(bool white);

    /// Takes over all properties of a design and shows them.
    void ReadProperties(const Properties& design);
    /// All properties, which are also shown again.
    [[nodiscard]] Properties WriteProperties();

    [[nodiscard]] QSize sizeHint() const override;

    /// The movie, and over it the text and the small picture.
    Placed<ShockwaveFlash> b1{this, "b1", {0, 0, 2550, 510}};
    Placed<QLabel> Label1{this, "Label1", {480, 0, 2055, 255}};
    Placed<Picture> Image2{this, "Image2", {150, 120, 240, 240}};

protected:
    void paintEvent(QPaintEvent* /*event*/) override {}
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void layOut();
    void makeWhite();

    Properties properties;
    FocusRing ring{this};
};

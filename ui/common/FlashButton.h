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

/// Shows, over all else in a control, that the keyboard is with it. The mouse goes through.
class FocusRing : public QWidget {
public:
    explicit FocusRing(QWidget* control);

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// A button whose face is a movie. The movie does the hovering and the press, and tells when it was
/// pressed; keys are handed to it. Caption and icon are laid over it. Without its movie there is no
/// button: nothing is drawn and nothing can be pressed.
class FlashButton : public QAbstractButton {
public:
    /// What the design of a window keeps of a button.
    struct Properties {
        Drawing Icon = nullptr;
        QString Caption = "Caption";
        bool whiteBG = false;
    };

    Event<> Click;
    /// A property was written and is to be kept.
    Event<std::string_view> PropertyChanged;

    explicit FlashButton(QWidget* parent) : FlashButton(parent, folders::movie("button.swf")) {}
    FlashButton(QWidget* parent, const std::filesystem::path& movie);

    [[nodiscard]] const QString& Caption() const { return properties.Caption; }
    void setCaption(const QString& caption);
    [[nodiscard]] Drawing Icon() const { return properties.Icon; }
    void setIcon(Drawing icon);
    /// Changes the picture that is seen, and not the one that is kept.
    void setButtonIcon(Drawing icon);
    /// Also makes the ground white when it is true, so that nothing takes that back.
    [[nodiscard]] bool whiteBG();
    void setWhiteBG(bool white);

    void ReadProperties(const Properties& kept);
    [[nodiscard]] Properties WriteProperties();

    [[nodiscard]] QSize sizeHint() const override;

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

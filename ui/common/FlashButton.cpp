#include "ui/common/FlashButton.h"

#include "ui/common/look.h"
#include "ui/common/roles.h"

#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

namespace {

/// The greatest height of a button, in twips.
constexpr int greatestHeight = 615;

}  // namespace

FocusRing::FocusRing(QWidget* control) : QWidget(control) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    roles::decorate(*this);
    hide();
}

void FocusRing::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    look::paintFocusRing(painter, QRectF(rect()));
}

FlashButton::FlashButton(QWidget* parent, const std::filesystem::path& movie)
    : QAbstractButton(parent) {
    b1.setExactFit(true);
    Label1.setTextFormat(Qt::PlainText);
    Label1.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    for (QWidget* const over : {static_cast<QWidget*>(&Label1), static_cast<QWidget*>(&Image2)}) {
        over->setAttribute(Qt::WA_TransparentForMouseEvents);
    }
    // The button's name says what they show.
    roles::decorate(b1);
    roles::decorate(Label1);
    ring.raise();
    ReadProperties({});
    layOut();
    b1.FSCommand = [this](std::string_view command, std::string_view /*arguments*/) {
        if (command == "click") Click();
    };
    b1.Read = [this] {
        if (!b1.isEmpty()) return;
        setEnabled(false);
        Label1.hide();
        Image2.hide();
    };
    setFocusPolicy(Qt::StrongFocus);
    b1.setMovie(movie);
    // Assistive programs and the space bar press the movie as well.
    connect(this, &QAbstractButton::clicked, this, [this] { b1.key(Qt::Key_Space); });
}

void FlashButton::setCaption(const QString& caption) {
    properties.Caption = caption;
    PropertyChanged("Caption");
    Label1.setText(caption);
    setAccessibleName(caption.trimmed());
}

void FlashButton::setIcon(Drawing icon) {
    properties.Icon = icon;
    PropertyChanged("Icon");
    Image2.setDrawing(icon);
    layOut();
}

void FlashButton::setButtonIcon(Drawing icon) {
    Image2.setDrawing(icon);
    layOut();
    PropertyChanged("ButtonIcon");
}

bool FlashButton::whiteBG() {
    if (properties.whiteBG) makeWhite();
    return properties.whiteBG;
}

void FlashButton::setWhiteBG(bool white) {
    properties.whiteBG = white;
    PropertyChanged("whiteBG");
    if (white) makeWhite();
}

void FlashButton::ReadProperties(const Properties& design) {
    properties = design;
    Label1.setText(design.Caption);
    setAccessibleName(design.Caption.trimmed());
    Image2.setDrawing(design.Icon);
    if (design.whiteBG) makeWhite();
    layOut();
}

FlashButton::Properties FlashButton::WriteProperties() {
    Image2.setDrawing(properties.Icon);
    if (properties.whiteBG) makeWhite();
    Label1.setText(properties.Caption);
    return properties;
}

QSize FlashButton::sizeHint() const {
    return {look::scaled(pixels(2550)), look::scaled(pixels(510))};
}

void FlashButton::makeWhite() {
    QPalette colors = palette();
    // A button's ground is that of its own role, not the window's.
    for (const auto role : {QPalette::Window, backgroundRole()})
        colors.setColor(role, look::page);
    setPalette(colors);
    setAutoFillBackground(true);
}

void FlashButton::resizeEvent(QResizeEvent* /*event*/) { layOut(); }

void FlashButton::layOut() {
    resize(width(), std::min(height(), look::scaled(pixels(greatestHeight))));
    b1.resize(size());
    ring.resize(size());
    const int middle = height() * twipsPerPixel / 2;
    const auto moveTo = [middle](QWidget& control, int designHeight, int below) {
        const int up = designHeight / 2 - below;
        control.move(control.x(), pixels(middle - qRound(up * look::letterScale())));
    };
    // The text is at the top of its label, so this puts it into the middle.
    moveTo(Label1, 255, 15);
    moveTo(Image2, 240, 0);
}

void FlashButton::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter) {
        QAbstractButton::keyPressEvent(event);
    } else if (!event->isAutoRepeat()) {
        b1.key(event->key());
    }
}

void FlashButton::focusInEvent(QFocusEvent* event) {
    ring.show();
    QAbstractButton::focusInEvent(event);
}

void FlashButton::focusOutEvent(QFocusEvent* event) {
    ring.hide();
    QAbstractButton::focusOutEvent(event);
}

#include "ui/options/optionControls.h"

#include "platform/qt/text.h"
#include "ui/common/look.h"

#include <QCompleter>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QValidator>

namespace {

const QColor onColor{0, 0, 0};
const QColor offColor{255, 0, 0};

/// Takes what is one byte, or nothing.
class OneByte final : public QValidator {
public:
    using QValidator::QValidator;

    State validate(QString& text, int& /*cursor*/) const override {
        // Half of a character, to which a box that holds one unit cuts it, is none.
        const bool isHalf = !text.isEmpty() && text.front().isSurrogate();
        return fromQString(text).size() <= 1 && !isHalf ? Acceptable : Invalid;
    }
};

}  // namespace

Toggle::Toggle(QWidget* parent) : QAbstractButton(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setOn(false);
    connect(this, &QAbstractButton::clicked, this, [this] { setOn(!isOn()); });
}

void Toggle::setHeading(const QString& newHeading) {
    heading = newHeading;
    name();
}

void Toggle::setOn(bool on) {
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText, on ? onColor : offColor);
    setPalette(colors);
    setText(on ? "Enabled" : "Disabled");
    name();
}

bool Toggle::isOn() const { return palette().color(QPalette::WindowText) == onColor; }

void Toggle::name() { setAccessibleName(heading.isEmpty() ? text() : heading + ": " + text()); }

void Toggle::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    QFont ownFont = font();
    ownFont.setUnderline(underMouse());
    painter.setFont(ownFont);
    painter.setPen(palette().color(QPalette::WindowText));
    // Leaves room for the ring at the left.
    painter.drawText(rect().adjusted(5, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, text());
    if (hasFocus()) look::paintFocusRing(painter, QRectF(rect()));
}

void Toggle::enterEvent(QEnterEvent* /*event*/) { update(); }

void Toggle::leaveEvent(QEvent* /*event*/) { update(); }

StatusBox::StatusBox(QWidget* parent) : QComboBox(parent) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
}

void StatusBox::keyPressEvent(QKeyEvent* event) {
    // Keys that have a text are discarded, which backspace and Ctrl+V have as well.
    if (!event->text().isEmpty() && event->key() != Qt::Key_Delete) return;
    QComboBox::keyPressEvent(event);
}

void StatusBox::inputMethodEvent(QInputMethodEvent* event) { event->accept(); }

BracketBox::BracketBox(QWidget* parent) : QLineEdit(parent) {
    setMaxLength(1);
    setAlignment(Qt::AlignHCenter);
    setValidator(new OneByte(this));
}

void nameAfter(const QString& heading, QWidget& control) { control.setAccessibleName(heading); }

void nameAfter(const QString& heading, Toggle& control) { control.setHeading(heading); }

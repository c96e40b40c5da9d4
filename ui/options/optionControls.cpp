#include "ui/options/optionControls.h"

#include "platform/qt/text.h"
#include "ui/common/lists.h"
#include "ui/common/look.h"
#include "ui/common/roles.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>
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
    // So that assistive programs take it for what it is.
    setCheckable(true);
    setOn(false);
    connect(this, &QAbstractButton::toggled, this, [this](bool on) { setOn(on); });
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
    setChecked(on);
}

bool Toggle::isOn() const { return palette().color(QPalette::WindowText) == onColor; }

void Toggle::name() { setAccessibleName(heading.isEmpty() ? text() : heading + ": " + text()); }

void Toggle::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double scale = look::letterScale();
    // Leaves room for the ring at the left.
    const QRectF track(5, (height() - 13 * scale) / 2, 25 * scale, 13 * scale);
    const double radius = track.height() / 2;
    const QPointF knob(isOn() ? track.right() - radius : track.left() + radius, track.center().y());
    painter.setPen(QPen(isOn() ? look::accent : offColor, 1.2));
    painter.setBrush(isOn() ? look::accent : look::page);
    painter.drawRoundedRect(track, radius, radius);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isOn() ? look::page : offColor);
    const double inner = radius - 2.5 * scale;
    painter.drawEllipse(knob, inner, inner);

    QFont ownFont = font();
    ownFont.setUnderline(underMouse());
    painter.setFont(ownFont);
    // Pure red is too light for letters.
    painter.setPen(isOn() ? onColor : look::alert);
    painter.drawText(QRectF(rect()).adjusted(track.right() + 7, 0, 0, 0),
                     Qt::AlignLeft | Qt::AlignVCenter, text());
    if (hasFocus()) look::paintFocusRing(painter, QRectF(rect()));
}

void Toggle::enterEvent(QEnterEvent* /*event*/) { update(); }

void Toggle::leaveEvent(QEvent* /*event*/) { update(); }

StatusBox::StatusBox(QWidget* parent) : QComboBox(parent) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
    setItemDelegate(new RowDelegate(this));
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
    connect(this, &QLineEdit::inputRejected, this,
            [this] { QToolTip::showText(mapToGlobal(rect().bottomLeft()), toolTip(), this); });
}

Choice::Choice(QWidget* parent) : QWidget(parent) { roles::set(*this, QAccessible::Grouping); }

ChoiceButton::ChoiceButton(QWidget* parent) : QRadioButton(parent) {
    // Qt looks which one is chosen only when one of them has the keyboard already.
    const auto follow = [this](bool chosen) {
        setFocusPolicy(chosen ? Qt::StrongFocus : Qt::ClickFocus);
    };
    follow(isChecked());
    connect(this, &QRadioButton::toggled, this, follow);
}

void nameAfter(const QString& heading, QWidget& control) { control.setAccessibleName(heading); }

void nameAfter(const QString& heading, QAbstractButton& control) {
    control.setAccessibleName(heading + ": " + control.text());
}

void nameAfter(const QString& heading, Toggle& control) { control.setHeading(heading); }

void nameAfter(const QString& heading, StatusBox& control) {
    // Where its own name is the status, its parts say what it is for.
    control.setAccessibleName(heading);
    control.view()->setAccessibleName(heading);
    control.lineEdit()->setAccessibleName(heading);
}

void TitleBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    // The Tab key selects all, and the next letter would replace it, at once and for good.
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
        end(false);
}

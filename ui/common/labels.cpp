#include "ui/common/labels.h"

#include "base/userText.h"
#include "ui/common/Form.h"
#include "ui/common/look.h"
#include "ui/common/roles.h"
#include "ui/common/shownText.h"

#include <QApplication>
#include <QIcon>
#include <QLinearGradient>
#include <QPainter>
#include <QTextLayout>
#include <QTextOption>

namespace {

/// More characters than a label has room for, so that a huge text costs no more to lay out.
constexpr std::size_t mostShown = 2000;

}  // namespace

void setTip(QWidget& widget, const QString& lines) {
    if (lines.isEmpty()) return;
    // A paragraph is wrapped.
    widget.setToolTip("<p>" + lines.toHtmlEscaped().replace('\n', "<br>") + "</p>");
    // Assistive programs would read out the tool-tip with its marks.
    widget.setAccessibleDescription(lines);
}

TextLabel::TextLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
}

void TextLabel::setHeading(bool heading) {
    QFont ownFont = font();
    ownFont.setBold(heading);
    setFont(ownFont);
}

PlainLabel::PlainLabel(QWidget* parent) : QWidget(parent) {
    roles::set(*this, QAccessible::StaticText);
}

void PlainLabel::setText(std::string_view newText) {
    whole = newText;
    shown = shownText(userText::beginning(newText, mostShown));
    setAccessibleName(shown);
    update();
}

void PlainLabel::paintEvent(QPaintEvent* /*event*/) {
    const QRectF room = QRectF(rect()).marginsRemoved(margins);
    const QFontMetricsF metrics(font());
    const double pitch = metrics.lineSpacing();
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QPainter painter(this);
    double top = room.top();
    const QStringList paragraphs = shown.split('\n');
    for (const QString& paragraph : paragraphs) {
        QTextLayout layout(paragraph, font());
        layout.setTextOption(option);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(room.width());
            const bool endsParagraph = line.textStart() + line.textLength() >= paragraph.size();
            const bool isWhole = endsParagraph && &paragraph == &paragraphs.last();
            QString text = paragraph.mid(line.textStart(), line.textLength());
            const QRectF place(room.left(), top, room.width(), pitch);
            top += pitch;
            const bool isLast = top + pitch > room.bottom() + 0.5;
            if (isLast && !isWhole) {
                text = paragraph.mid(line.textStart());
                if (endsParagraph) text += QChar(0x2026);
                text = metrics.elidedText(text, Qt::ElideRight, room.width());
            }
            painter.drawText(place, Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine, text);
            if (isLast) {
                layout.endLayout();
                return;
            }
        }
        layout.endLayout();
    }
}

LineLabel::LineLabel(QWidget* parent) : QLabel(parent) { setTextFormat(Qt::PlainText); }

void LineLabel::paintEvent(QPaintEvent* /*event*/) {
    const QString line = fontMetrics().elidedText(text(), Qt::ElideRight, width());
    QPainter(this).drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, line);
}

Banner::Banner(QWidget* parent) : QWidget(parent) { roles::set(*this, QAccessible::StaticText); }

void Banner::setText(const QString& newSubject) {
    subject = newSubject;
    setAccessibleName(subject);
    update();
}

void Banner::paintEvent(QPaintEvent* /*event*/) {
    const int iconSize = look::scaled(32);
    QPainter painter(this);
    look::paintBand(painter, rect());
    const QRect icon(2 * look::gap, (height() - iconSize) / 2, iconSize, iconSize);
    QApplication::windowIcon().paint(&painter, icon);

    QFont large = font();
    large.setPixelSize(look::scaled(20));
    painter.setFont(large);
    painter.setPen(look::text);
    painter.drawText(rect().adjusted(icon.right() + 2 * look::gap, 0, 0, 0), Qt::AlignVCenter,
                     subject);
    painter.setPen(look::line);
    painter.drawLine(rect().bottomLeft(), rect().bottomRight());
}

PageTitle::PageTitle(QWidget* parent) : QWidget(parent) {
    roles::set(*this, QAccessible::StaticText);
}

void PageTitle::setSubject(const QString& newSubject, Drawing newDrawing) {
    subject = newSubject;
    drawing = newDrawing;
    setAccessibleName(subject);
    update();
}

void PageTitle::paintEvent(QPaintEvent* /*event*/) {
    const int iconSize = look::scaled(24);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient ground(QPointF(0, 0), QPointF(width(), 0));
    ground.setColorAt(0, look::bandEnd);
    ground.setColorAt(1, look::page);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRect(rect());
    ground.setColorAt(0, look::line);
    painter.setBrush(ground);
    painter.drawRect(QRectF(0, height() - 2, width(), 2));

    QFont large = font();
    large.setPixelSize(look::scaled(17));
    large.setBold(true);
    painter.setFont(large);
    painter.setPen(look::text);
    painter.drawText(rect().adjusted(look::scaled(46), 0, 0, 0), Qt::AlignVCenter, subject);

    painter.translate(look::scaled(12), (height() - iconSize) / 2.0);
    painter.scale(iconSize / 16.0, iconSize / 16.0);
    if (drawing != nullptr) drawing(painter);
}

void addCaptions(QWidget* page, std::span<const Caption> captions) {
    for (const auto& [name, place, text, isHeading] : captions) {
        auto* const label = new Placed<TextLabel>(page, name, place, text);
        label->setHeading(isHeading);
    }
}

#include "ui/common/labels.h"

#include "ui/common/Form.h"
#include "ui/common/shownText.h"

#include <QPainter>
#include <QTextOption>

namespace {

/// More characters than a label has room for, so that a huge text costs no more to lay out.
constexpr std::size_t mostShown = 2000;

}  // namespace

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

void PlainLabel::setText(std::string_view newText) {
    whole = newText;
    shown = shownText(newText.substr(0, mostShown));
    setAccessibleName(shown);
    update();
}

void PlainLabel::paintEvent(QPaintEvent* /*event*/) {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QPainter(this).drawText(QRectF(rect()), shown, option);
}

void addCaptions(QWidget* page, std::span<const Caption> captions) {
    for (const auto& [name, place, text, isHeading] : captions) {
        auto* const label = new Placed<TextLabel>(page, name, place, text);
        label->setHeading(isHeading);
    }
}

#include "ui/common/PlainLabel.h"

#include "ui/common/shownText.h"

#include <QPainter>
#include <QTextOption>

namespace {

/// More characters than a label has room for, so that a huge text costs no more to lay out.
constexpr std::size_t mostShown = 2000;

}  // namespace

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

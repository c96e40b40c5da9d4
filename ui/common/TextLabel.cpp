#include "ui/common/TextLabel.h"

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

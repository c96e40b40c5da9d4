#include "ui/common/shownText.h"

#include "base/text.h"
#include "platform/qt/text.h"

#include <QClipboard>
#include <QGuiApplication>

#include <algorithm>

using namespace std::string_view_literals;

namespace {

constexpr QChar crSymbol(0x240D);
constexpr QChar lfSymbol(0x240A);

QString boxed(QString text) {
    constexpr QChar box(0x25A1);
    std::ranges::replace_if(
        text, [](QChar character) { return character != '\n' && !character.isPrint(); }, box);
    return text;
}

}  // namespace

QString shownText(std::string_view bytes) {
    return boxed(toQString(replaceAll(bytes, "\r\n"sv, "\n"sv)));
}

QString shownLine(std::string_view bytes) {
    QString line = shownText(bytes.substr(0, longestShownLine)).replace('\n', ' ');
    if (bytes.size() > longestShownLine) line.append(QChar(0x2026));
    return line;
}

QString editableText(std::string_view bytes) {
    QString text = toQString(bytes);
    text.replace("\r\n", QString(QChar::ParagraphSeparator));
    text.replace('\r', crSymbol);
    text.replace('\n', lfSymbol);
    return text;
}

std::string bytesOfEditable(const QString& text) {
    QString edited = text;
    edited.replace(crSymbol, '\r');
    edited.replace(lfSymbol, '\n');
    edited.replace(QChar(QChar::ParagraphSeparator), "\r\n");
    // Pasted text may have line breaks within a paragraph.
    edited.replace(QChar(QChar::LineSeparator), "\r\n");
    return fromQString(edited);
}

void copyToClipboard(std::string_view text) {
    QClipboard* const clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    clipboard->setText(toQString(text));
}

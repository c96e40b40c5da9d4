#include "ui/common/shownText.h"

#include "base/text.h"
#include "base/userText.h"
#include "platform/qt/text.h"

#include <QClipboard>
#include <QGuiApplication>

#include <algorithm>

using namespace std::string_view_literals;

namespace {

constexpr QChar crSymbol(0x240D);
constexpr QChar lfSymbol(0x240A);

/// Whether text is shown with the character left in place. Those that only join or separate
/// letters, as emoji and the scripts of right to left need them, stay; those that turn the
/// direction of what follows do not, since they can make a text read as another one.
bool isShown(char32_t character) {
    const bool joins = (character >= 0x200C && character <= 0x200F) || character == 0x061C;
    return character == '\n' || joins || QChar::isPrint(character);
}

QString boxed(const QString& text) {
    constexpr char32_t box = 0x25A1;
    std::u32string characters = text.toStdU32String();
    std::ranges::replace_if(
        characters, [](char32_t character) { return !isShown(character); }, box);
    return QString::fromStdU32String(characters);
}

}  // namespace

QString shownText(std::string_view bytes) {
    return boxed(toQString(replaceAll(bytes, "\r\n"sv, "\n"sv)));
}

QString shownLine(std::string_view bytes) {
    QString line = shownText(userText::beginning(bytes, longestShownLine)).replace('\n', ' ');
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

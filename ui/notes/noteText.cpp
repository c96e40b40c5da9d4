#include "ui/notes/noteText.h"

#include "platform/qt/text.h"

namespace noteText {

namespace {

constexpr QChar signOfCr(0x240D);
constexpr QChar signOfLf(0x240A);

}  // namespace

QString toBox(std::string_view note) {
    QString text = toQString(note);
    text.replace("\r\n", QString(QChar::ParagraphSeparator));
    text.replace('\r', signOfCr);
    text.replace('\n', signOfLf);
    return text;
}

std::string fromBox(const QString& text) {
    QString note = text;
    note.replace(signOfCr, '\r');
    note.replace(signOfLf, '\n');
    note.replace(QChar(QChar::ParagraphSeparator), "\r\n");
    // What is pasted may hold breaks within a paragraph.
    note.replace(QChar(QChar::LineSeparator), "\r\n");
    return fromQString(note);
}

}  // namespace noteText

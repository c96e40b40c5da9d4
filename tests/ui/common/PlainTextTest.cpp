#include "ui/common/labels.h"
#include "ui/common/shownText.h"

#include <gtest/gtest.h>

#include <QImage>

namespace {

/// A label's picture.
QImage pictureOf(QWidget& label) {
    label.resize(170, 65);
    QImage picture(label.size(), QImage::Format_RGB32);
    label.render(&picture);
    return picture;
}
QImage pictureOf(std::string_view text) {
    PlainLabel label;
    label.setText(text);
    return pictureOf(label);
}
QImage pictureOfLine(const QString& text) {
    LineLabel label(nullptr);
    label.setText(text);
    return pictureOf(label);
}

/// Whether something is drawn below this line.
bool reachesBelow(const QImage& picture, int line) {
    const QColor ground = picture.pixelColor(picture.width() - 1, 0);
    for (int y = line; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y) != ground) return true;
        }
    }
    return false;
}

TEST(ShownText, KeepsLineBreaksAndBoxesOtherControls) {
    EXPECT_EQ(shownText("a\r\nb"), "a\nb");
    EXPECT_EQ(shownText("\x01\x7F\r"), "\u25A1\u25A1\u25A1");
    EXPECT_EQ(shownText("\x80 \xE4"), "\u20AC \u00E4");
}

TEST(ShownText, KeepsLettersOfAllScriptsAndWhatJoinsThem) {
    // A family of emoji, a flag, letters of right to left, one that must not be joined.
    for (const char* const text :
         {"\U0001F468\u200D\U0001F469\u200D\U0001F467", "\U0001F1E9\U0001F1EA",
          "\u05E9\u05DC\u05D5\u05DD", "\u0645\u06CC\u200C\u062E\u0648\u0627\u0647\u0645",
          "\u4F60\u597D", "\u041F\u0440\u0438"}) {
        EXPECT_EQ(shownText(text), QString::fromUtf8(text));
    }
}

TEST(ShownText, BoxesWhatTurnsTheDirectionOfText) {
    // NOLINTNEXTLINE(misc-misleading-bidirectional): as somebody would who wants to mislead.
    EXPECT_EQ(shownText("a\u202Eb\u2066c"), "a\u25A1b\u25A1c");
}

TEST(ShownText, OfALongLineEndsWithAWholeCharacter) {
    std::string text = "x";
    while (text.size() < 3 * longestShownLine)
        text += "\u4F60";
    const QString line = shownLine(text);
    EXPECT_EQ(line, "x" + QString((longestShownLine - 1) / 3, QChar(0x4F60)) + QChar(0x2026));
}

TEST(ShownText, OfALineIsOneLine) { EXPECT_EQ(shownLine("a\r\nb\nc"), "a b c"); }

TEST(ShownText, OfAHugeLineIsItsBeginning) {
    const QString line = shownLine(std::string(100'000, 'x'));
    EXPECT_EQ(line.size(), 4097);
    EXPECT_TRUE(line.endsWith(QChar(0x2026)));
}

TEST(PlainLabel, ShowsMarkupAsItIs) {
    EXPECT_NE(pictureOf("<b>x</b>"), pictureOf("x"));
    EXPECT_NE(pictureOf("&lt;"), pictureOf("<"));
}

TEST(PlainLabel, WrapsWordsAndWhatIsLongerThanALine) {
    EXPECT_FALSE(reachesBelow(pictureOf("one line"), 18));
    EXPECT_TRUE(reachesBelow(pictureOf(std::string(60, 'w')), 18));
    EXPECT_TRUE(reachesBelow(pictureOf("some words that are longer than the label is wide"), 18));
}

TEST(PlainLabel, EndsInAnEllipsisWhereThereIsMore) {
    // The label has room for five lines.
    const std::string lines = "1\r\n2\r\n3\r\n4\r\n5";
    EXPECT_NE(pictureOf(lines), pictureOf(lines + "\r\n6"));
    EXPECT_EQ(pictureOf(lines + "\r\n6"), pictureOf("1\r\n2\r\n3\r\n4\r\n5\u2026"));
    EXPECT_EQ(pictureOf(lines + "\r\n6"), pictureOf(lines + "\r\n7\r\n8"));
}

TEST(PlainLabel, KeepsLineBreaks) { EXPECT_TRUE(reachesBelow(pictureOf("a\r\nb"), 18)); }

TEST(PlainLabel, KeepsTheWholeTextWhateverItShows) {
    PlainLabel label;
    const std::string text(100'000, 'x');
    label.setText(text);
    EXPECT_EQ(label.text(), text);
}

TEST(LineLabel, EndsInAnEllipsisWhereThereIsMore) {
    const QImage cut = pictureOfLine(QString(100, 'x'));
    int count = 1;
    while (count < 100 && pictureOfLine(QString(count, 'x') + QChar(0x2026)) != cut)
        ++count;
    EXPECT_LT(count, 100);
    // It is seen, and not cut off with the rest.
    EXPECT_NE(pictureOfLine(QString(count, 'x')), cut);
}

TEST(EditableText, ComesBackAsItWasTypedInAllScripts) {
    for (const char* const typed :
         {"Zo\u00EB", "\u00C3\u00A9", "\u0159", "\u041F\u0440\u0438", "\u0645\u0631\u062D",
          "\u05E9\u05DC", "\u4F60\u597D", "\U0001F600"}) {
        const QString text = QString::fromUtf8(typed);
        EXPECT_EQ(editableText(bytesOfEditable(text)), text);
    }
    EXPECT_EQ(bytesOfEditable("Zo\u00EB"), "Zo\xEB");
}

TEST(EditableText, ComesBackFromTheBoxByteForByte) {
    for (const char* const note : {"", "a", "a\r\nb", "\r", "\n", "\r\r\n\n", "a\n\rb"}) {
        EXPECT_EQ(bytesOfEditable(editableText(note)), note);
    }
}

}  // namespace

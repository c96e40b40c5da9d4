#include "movies/maker/Drawing.h"

#include <QFont>
#include <QFontInfo>
#include <QGlyphRun>
#include <QRawFont>
#include <QTextLayout>
#include <QTransform>

#include <algorithm>
#include <utility>

namespace {

/// Outlines are taken at this size, so that they are those of the font's designer.
constexpr int designSize = 1024;

/// The outlines of a text's letters, the first of which begins at 0, 0 on the baseline.
std::vector<QPainterPath> lettersOf(const QString& text, const QFont& font) {
    QTextLayout layout(text, font);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setNumColumns(static_cast<int>(text.size()));
    layout.endLayout();
    std::vector<QPainterPath> letters;
    for (const QGlyphRun& run : layout.glyphRuns()) {
        const auto glyphs = run.glyphIndexes();
        const auto places = run.positions();
        for (qsizetype index = 0; index < glyphs.size(); ++index) {
            QPainterPath letter = run.rawFont().pathForGlyph(glyphs[index]);
            letter.translate(places[index].x(), places[index].y() - line.ascent());
            if (!letter.isEmpty()) letters.push_back(std::move(letter));
        }
    }
    return letters;
}

std::vector<QPainterPath> readText(Statement& statement) {
    const QString text = QString::fromStdString(statement.word("a text"));
    const double x = statement.number("a place");
    const double baseline = statement.number("a baseline");
    const double size = statement.number("a size");
    QFont font("Liberation Sans");
    font.setPixelSize(designSize);
    font.setBold(statement.take("bold"));
    font.setHintingPreference(QFont::PreferNoHinting);
    if (QFontInfo(font).family() != "Liberation Sans") {
        statement.complain("the font Liberation Sans is not installed");
    }
    std::vector<QPainterPath> letters = lettersOf(text, font);
    double width = 0;
    for (const QPainterPath& letter : letters)
        width = std::max(width, letter.boundingRect().right());
    const double back = statement.take("right") ? width : statement.take("middle") ? width / 2 : 0;
    const double scale = size / designSize;
    const QTransform place(scale, 0, 0, scale, x - back * scale, baseline);
    for (QPainterPath& letter : letters)
        letter = place.map(letter);
    return letters;
}

QPointF readPoint(Statement& statement) {
    const double x = statement.number("a place");
    return {x, statement.number("a place")};
}

QPainterPath readPath(Statement& statement) {
    QPainterPath path;
    while (statement.hasMore()) {
        const std::string step = statement.word("a step");
        if (step == "M") {
            path.moveTo(readPoint(statement));
        } else if (step == "L") {
            path.lineTo(readPoint(statement));
        } else if (step == "Q") {
            const QPointF control = readPoint(statement);
            path.quadTo(control, readPoint(statement));
        } else if (step == "C") {
            const QPointF first = readPoint(statement);
            const QPointF second = readPoint(statement);
            path.cubicTo(first, second, readPoint(statement));
        } else if (step == "Z") {
            path.closeSubpath();
        } else {
            statement.complain("\"" + step + "\" is no step of a path");
        }
    }
    return path;
}

QRectF readRect(Statement& statement) {
    const QPointF corner = readPoint(statement);
    const double width = statement.number("a width");
    return {corner, QSizeF(width, statement.number("a height"))};
}

/// A rectangle whose right half goes to and fro.
QPainterPath teeth(const QRectF& rect, int count) {
    QPainterPath path(rect.topLeft());
    path.lineTo(rect.bottomLeft());
    const double step = rect.height() / count;
    for (int tooth = 0; tooth < count; ++tooth) {
        path.lineTo(rect.center().x(), rect.bottom() - tooth * step);
        path.lineTo(rect.right(), rect.bottom() - (tooth + 0.5) * step);
    }
    path.lineTo(rect.center().x(), rect.top());
    path.closeSubpath();
    return path;
}

/// One path, but for a text.
std::vector<QPainterPath> readGeometry(Statement& statement) {
    if (statement.take("text")) return readText(statement);
    QPainterPath path;
    if (statement.take("rect")) {
        path.addRect(readRect(statement));
    } else if (statement.take("rounded")) {
        const QRectF rect = readRect(statement);
        const double radius = statement.number("a radius");
        path.addRoundedRect(rect, radius, radius);
    } else if (statement.take("circle")) {
        const QPointF middle = readPoint(statement);
        const double radius = statement.number("a radius");
        path.addEllipse(middle, radius, radius);
    } else if (statement.take("ellipse")) {
        const QPointF middle = readPoint(statement);
        const double across = statement.number("a radius");
        path.addEllipse(middle, across, statement.number("a radius"));
    } else if (statement.take("teeth")) {
        const QRectF rect = readRect(statement);
        path = teeth(rect, statement.whole("a number of teeth"));
    } else {
        statement.expect("path");
        path = readPath(statement);
    }
    return {path};
}

void readLineStyle(Statement& statement, Stroke& stroke) {
    if (statement.take("across")) {
        stroke.scalesDown = false;
    } else if (statement.take("down")) {
        stroke.scalesAcross = false;
    } else if (statement.take("unscaled")) {
        stroke.scalesAcross = stroke.scalesDown = false;
    }
    if (statement.take("flat")) stroke.cap = Stroke::Cap::Flat;
    if (statement.take("square")) stroke.cap = Stroke::Cap::Square;
    if (statement.take("bevel")) stroke.join = Stroke::Join::Bevel;
    if (statement.take("miter")) stroke.join = Stroke::Join::Miter;
}

}  // namespace

Drawing readStrokes(Statement& statement, const Paints& paints) {
    Stroke stroke;
    if (statement.take("line")) {
        stroke.width = statement.number("a width");
        if (stroke.width <= 0) statement.complain("a line has a width");
        readLineStyle(statement, stroke);
    } else {
        statement.expect("fill");
    }
    stroke.paint = paints.paint(statement);
    Drawing strokes;
    for (QPainterPath& path : readGeometry(statement)) {
        stroke.path = std::move(path);
        strokes.push_back(stroke);
    }
    statement.finish();
    return strokes;
}

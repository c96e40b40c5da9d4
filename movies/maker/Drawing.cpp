#include "movies/maker/Drawing.h"

#include <QFont>
#include <QFontInfo>
#include <QTransform>

namespace {

/// Outlines are taken at this size, so that they are those of the font's designer.
constexpr int designSize = 1024;

QPainterPath readText(Statement& statement) {
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
    QPainterPath path;
    path.addText(0, 0, font, text);
    const double width = path.boundingRect().right();
    const double back = statement.take("right") ? width : statement.take("middle") ? width / 2 : 0;
    const double scale = size / designSize;
    return QTransform(scale, 0, 0, scale, x - back * scale, baseline).map(path);
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

QPainterPath readGeometry(Statement& statement) {
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
    } else if (statement.take("text")) {
        path = readText(statement);
    } else {
        statement.expect("path");
        path = readPath(statement);
    }
    statement.finish();
    return path;
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

Stroke readStroke(Statement& statement, const Paints& paints) {
    Stroke stroke;
    if (statement.take("line")) {
        stroke.width = statement.number("a width");
        if (stroke.width <= 0) statement.complain("a line has a width");
        readLineStyle(statement, stroke);
    } else {
        statement.expect("fill");
    }
    stroke.paint = paints.paint(statement);
    stroke.path = readGeometry(statement);
    return stroke;
}

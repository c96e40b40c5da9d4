#include "movies/player/shapeReaders.h"

#include "base/Failure.h"
#include "movies/format/codes.h"
#include "movies/player/limits.h"

namespace swf {

namespace {

/// Reads the records of a shape into it: a pen moves, and changes its styles on the way.
class Pen {
public:
    Pen(Reader& reader, Shape& shape, std::size_t edgesLeft)
        : reader(reader), shape(shape), edgesLeft(edgesLeft) {
        readWidths();
    }

    /// `version` is for styles that come in between; without it there must be none.
    void draw(std::optional<ShapeVersion> version) {
        while (true) {
            if (reader.bit()) {
                // What came so far is the shape.
                if (edgesLeft == 0) return;
                drawEdge();
                continue;
            }
            const unsigned changes = reader.bits(5);
            if (changes == 0) return;
            change(changes, version);
        }
    }

private:
    void readWidths() {
        fillBits = reader.bits(4);
        lineBits = reader.bits(4);
    }

    void drawEdge() {
        Edge edge;
        edge.curved = !reader.bit();
        const unsigned width = reader.bits(4) + 2;
        edge.from = pen;
        if (edge.curved) {
            edge.control = moved(pen, width);
            edge.to = moved(edge.control, width);
        } else {
            const bool slanting = reader.bit();
            const bool upright = !slanting && reader.bit();
            const double x = upright ? 0 : reader.signedBits(width);
            const double y = slanting || upright ? reader.signedBits(width) : 0;
            edge.to = {pen.x + x, pen.y + y};
            edge.control = between(edge.from, edge.to, 0.5);
        }
        --edgesLeft;
        add(edge);
        pen = edge.to;
    }

    Point moved(Point from, unsigned width) {
        const double x = reader.signedBits(width);
        return {from.x + x, from.y + reader.signedBits(width)};
    }

    void add(const Edge& edge) {
        if (styles.count == 0) styles.first = static_cast<std::uint32_t>(shape.edges.size());
        shape.edges.push_back(edge);
        ++styles.count;
        if (styles.count == 1) {
            shape.runs.push_back(styles);
        } else {
            shape.runs.back().count = styles.count;
        }
    }

    void change(unsigned changes, std::optional<ShapeVersion> version) {
        styles.count = 0;
        if (changes & styleChange::Move) {
            const unsigned width = reader.bits(5);
            const double x = reader.signedBits(width);
            pen = {x, static_cast<double>(reader.signedBits(width))};
        }
        if (changes & styleChange::Fill0)
            styles.fill0 = index(fillBits, belowFills, shape.fills.size());
        if (changes & styleChange::Fill1)
            styles.fill1 = index(fillBits, belowFills, shape.fills.size());
        if (changes & styleChange::Line)
            styles.line = index(lineBits, belowLines, shape.lines.size());
        if (changes & styleChange::NewStyles) {
            if (!version) throw Failure("styles where there can be none");
            belowFills = shape.fills.size();
            belowLines = shape.lines.size();
            readStyles(reader, *version, shape);
            styles = {};
            readWidths();
        }
    }

    /// Numbers of styles that are not there are no style.
    std::uint32_t index(unsigned width, std::size_t below, std::size_t count) {
        const std::uint32_t number = reader.bits(width);
        if (number == 0 || number > count - below) return 0;
        return static_cast<std::uint32_t>(below + number);
    }

    Reader& reader;
    Shape& shape;
    std::size_t edgesLeft;
    unsigned fillBits = 0;
    unsigned lineBits = 0;
    std::size_t belowFills = 0;
    std::size_t belowLines = 0;
    Point pen;
    Run styles;
};

}  // namespace

Shape readShape(Reader& reader, ShapeVersion version) {
    static_cast<void>(readRect(reader));
    if (version == ShapeVersion::Four) {
        static_cast<void>(readRect(reader));
        reader.skip(1);
    }
    Shape shape;
    readStyles(reader, version, shape);
    Pen(reader, shape, limits::edgesPerShape).draw(version);
    return shape;
}

MorphShape readMorphShape(Reader& reader, bool second) {
    for (int rects = second ? 4 : 2; rects > 0; --rects)
        static_cast<void>(readRect(reader));
    if (second) reader.skip(1);
    const std::uint32_t toEnd = reader.u32();
    Reader endReader = reader;
    endReader.skip(toEnd);

    MorphShape shape;
    readMorphStyles(reader, second, shape);
    Pen(reader, shape.start, limits::edgesPerShape / 2).draw({});
    Pen(endReader, shape.end, limits::edgesPerShape / 2).draw({});
    if (shape.start.edges.size() != shape.end.edges.size()) throw Failure("ends that do not fit");
    return shape;
}

Shape readGlyph(Reader& reader, std::size_t edgesLeft) {
    Shape shape;
    shape.fills.emplace_back();
    shape.layers.push_back({1, 0});
    reader.align();
    Pen(reader, shape, edgesLeft).draw({});
    return shape;
}

}  // namespace swf

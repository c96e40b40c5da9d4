#include "movies/maker/shapeTags.h"

#include "movies/maker/Outline.h"

#include <algorithm>
#include <cmath>

namespace shapeTags {

namespace {

constexpr double twips = 20;
constexpr double one = 65536;

std::int32_t rounded(double value) { return static_cast<std::int32_t>(std::lround(value)); }

void writeTint(Bytes& bytes, Tint tint) {
    bytes.u8(tint.red);
    bytes.u8(tint.green);
    bytes.u8(tint.blue);
    bytes.u8(tint.alpha);
}

/// From the square, 32768 wide around its middle, that gradients are described in.
Placing gradientPlacing(const Paint& paint) {
    constexpr double half = 16384 / twips;
    if (paint.kind == Paint::Kind::Radial) {
        const double scale = paint.toX / half;
        return {scale, 0, 0, scale, paint.x, paint.y};
    }
    const double across = (paint.toX - paint.x) / 2 / half;
    const double down = (paint.toY - paint.y) / 2 / half;
    return {across, down, -down, across, (paint.x + paint.toX) / 2, (paint.y + paint.toY) / 2};
}

void writeFill(Bytes& bytes, const Paint& paint) {
    if (paint.kind == Paint::Kind::Solid) {
        bytes.u8(0);
        writeTint(bytes, paint.tint);
        return;
    }
    bytes.u8(paint.kind == Paint::Kind::Linear ? 0x10 : 0x12);
    writeMatrix(bytes, gradientPlacing(paint));
    bytes.u8(static_cast<unsigned>(paint.stops.size()));
    for (const Stop& stop : paint.stops) {
        bytes.u8(static_cast<unsigned>(rounded(stop.percent * 2.55)));
        writeTint(bytes, stop.tint);
    }
}

void writeStyles(Bytes& bytes, const Stroke& stroke) {
    const bool isLine = stroke.width > 0;
    bytes.u8(isLine ? 0 : 1);
    if (!isLine) writeFill(bytes, stroke.paint);
    bytes.u8(isLine ? 1 : 0);
    if (!isLine) return;
    bytes.u16(static_cast<unsigned>(rounded(stroke.width * twips)));
    writeTint(bytes, stroke.paint.tint);
}

void writeJump(Bytes& bytes, Spot to) {
    const unsigned width = bitsFor({to.x, to.y});
    bytes.bits(width, 5);
    bytes.signedBits(to.x, width);
    bytes.signedBits(to.y, width);
}

void writeEdge(Bytes& bytes, Spot from, const Part& part) {
    const bool curve = part.kind == Part::Kind::Curve;
    const Spot middle = curve ? part.control : part.to;
    const std::vector<std::int32_t> steps{middle.x - from.x, middle.y - from.y,
                                          part.to.x - middle.x, part.to.y - middle.y};
    const unsigned width = std::max(2U, bitsFor(steps));
    bytes.bits(curve ? 2 : 3, 2);
    bytes.bits(width - 2, 4);
    if (!curve) bytes.bits(1, 1);
    for (std::size_t index = 0; index < (curve ? 4U : 2U); ++index) {
        bytes.signedBits(steps[index], width);
    }
}

/// The records of an outline, which choose the one style there is when `styled`. `collapsed` leaves
/// each piece of it at where it begins.
void writeOutline(Bytes& bytes, const std::vector<Part>& parts, bool isLine, bool styled,
                  bool collapsed) {
    Spot pen;
    bool choose = styled;
    for (Part part : parts) {
        if (part.kind == Part::Kind::Jump) {
            // Jumps, and the first one chooses the fill to its right or the line.
            bytes.bits(!choose ? 1 : isLine ? 9 : 5, 6);
            writeJump(bytes, part.to);
            if (choose) bytes.bits(1, 1);
            choose = false;
            pen = part.to;
            continue;
        }
        if (collapsed) part.control = part.to = pen;
        writeEdge(bytes, pen, part);
        pen = part.to;
    }
}

QRectF boundsOf(const Drawing& drawing) {
    QRectF bounds;
    for (const Stroke& stroke : drawing) {
        const double margin = stroke.width / 2;
        bounds |= stroke.path.controlPointRect().adjusted(-margin, -margin, margin, margin);
    }
    return bounds;
}

void writeBounds(Bytes& bytes, const QRectF& bounds) {
    writeRect(bytes, bounds.left(), bounds.right(), bounds.top(), bounds.bottom());
}

/// The widths, in bits, of the numbers of styles: of one fill or line.
void writeWidths(Bytes& bytes, bool isLine) {
    bytes.bits(isLine ? 0 : 1, 4);
    bytes.bits(isLine ? 1 : 0, 4);
}

}  // namespace

void writeRect(Bytes& bytes, double left, double right, double top, double bottom) {
    const std::vector<std::int32_t> sides{rounded(left * twips), rounded(right * twips),
                                          rounded(top * twips), rounded(bottom * twips)};
    const unsigned width = bitsFor(sides);
    bytes.align();
    bytes.bits(width, 5);
    for (const std::int32_t side : sides)
        bytes.signedBits(side, width);
    bytes.align();
}

void writeMatrix(Bytes& bytes, const Placing& placing) {
    const auto pair = [&](double first, double second) {
        const std::vector<std::int32_t> values{rounded(first * one), rounded(second * one)};
        const unsigned width = bitsFor(values);
        bytes.bits(width, 5);
        for (const std::int32_t value : values)
            bytes.signedBits(value, width);
    };
    bytes.align();
    const bool scaled = placing.xx != 1 || placing.yy != 1;
    bytes.bits(scaled, 1);
    if (scaled) pair(placing.xx, placing.yy);
    const bool turned = placing.yx != 0 || placing.xy != 0;
    bytes.bits(turned, 1);
    if (turned) pair(placing.yx, placing.xy);
    pair(placing.dx * twips / one, placing.dy * twips / one);
    bytes.align();
}

Bytes shape(unsigned number, const Drawing& drawing) {
    constexpr unsigned defineShape3 = 32;
    Bytes body;
    body.u16(number);
    writeBounds(body, boundsOf(drawing));
    for (std::size_t index = 0; index < drawing.size(); ++index) {
        const Stroke& stroke = drawing[index];
        const bool isLine = stroke.width > 0;
        // Each lies in a layer of its own, since areas of one layer must not overlap.
        if (index > 0) body.bits(16, 6);
        writeStyles(body, stroke);
        writeWidths(body, isLine);
        writeOutline(body, outline(stroke.path), isLine, true, false);
    }
    body.bits(0, 6);
    return tag(defineShape3, body);
}

Bytes growing(unsigned number, const Stroke& line) {
    constexpr unsigned defineMorphShape = 46;
    Bytes styles;
    styles.u8(0);
    styles.u8(1);
    const auto width = static_cast<unsigned>(rounded(line.width * twips));
    styles.u16(width);
    styles.u16(width);
    writeTint(styles, line.paint.tint);
    writeTint(styles, line.paint.tint);
    const std::vector<Part> parts = outline(line.path);
    Bytes start;
    writeWidths(start, true);
    writeOutline(start, parts, true, true, true);
    Bytes end;
    end.bits(0, 8);
    writeOutline(end, parts, true, false, false);
    start.bits(0, 6);
    end.bits(0, 6);

    Bytes body;
    body.u16(number);
    writeBounds(body, boundsOf({line}));
    writeBounds(body, boundsOf({line}));
    body.u32(static_cast<std::uint32_t>(styles.get().size() + start.get().size()));
    body.append(styles);
    body.append(start);
    body.append(end);
    return tag(defineMorphShape, body);
}

}  // namespace shapeTags

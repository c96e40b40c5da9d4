#include "movies/maker/shapeTags.h"

#include "movies/maker/Outline.h"

#include <algorithm>
#include <cmath>

namespace shapeTags {

namespace {

using swf::twipsPerPixel;

std::int32_t rounded(double value) { return static_cast<std::int32_t>(std::lround(value)); }

/// From the square, 32768 wide around its middle, that gradients are described in.
swf::Matrix gradientMatrix(const Paint& paint) {
    constexpr double half = swf::gradientReach / twipsPerPixel;
    if (paint.kind == Paint::Kind::Radial) {
        const double scale = paint.toX / half;
        return {scale, 0, 0, scale, paint.x * twipsPerPixel, paint.y * twipsPerPixel};
    }
    const double across = (paint.toX - paint.x) / 2 / half;
    const double down = (paint.toY - paint.y) / 2 / half;
    return {across,
            down,
            -down,
            across,
            (paint.x + paint.toX) / 2 * twipsPerPixel,
            (paint.y + paint.toY) / 2 * twipsPerPixel};
}

void writePicture(swf::Writer& bytes, const Paint& paint) {
    using enum swf::FillType;
    bytes.code(paint.repeated ? (paint.rough ? RoughRepeatingBitmap : RepeatingBitmap)
                              : (paint.rough ? RoughClippedBitmap : ClippedBitmap));
    bytes.u16(paint.picture);
    const double scale = paint.pixel * twipsPerPixel;
    bytes.matrix({scale, 0, 0, scale, paint.x * twipsPerPixel, paint.y * twipsPerPixel});
}

void writeFill(swf::Writer& bytes, const Paint& paint) {
    if (paint.kind == Paint::Kind::Solid) {
        bytes.code(swf::FillType::Solid);
        bytes.color(paint.tint, true);
        return;
    }
    if (paint.kind == Paint::Kind::Picture) {
        writePicture(bytes, paint);
        return;
    }
    bytes.code(paint.kind == Paint::Kind::Linear ? swf::FillType::LinearGradient
               : paint.focus != 0                ? swf::FillType::FocalGradient
                                                 : swf::FillType::RadialGradient);
    bytes.matrix(gradientMatrix(paint));
    bytes.u8(static_cast<unsigned>(paint.spread) << 6U | (paint.light ? 1U << 4U : 0) |
             static_cast<unsigned>(paint.stops.size()));
    for (const Stop& stop : paint.stops) {
        bytes.u8(static_cast<unsigned>(rounded(stop.percent * 2.55)));
        bytes.color(stop.tint, true);
    }
    if (paint.focus != 0) {
        const auto focus = rounded(std::clamp(paint.focus, -100.0, 100.0) * 2.56);
        bytes.u16(static_cast<std::uint16_t>(focus));
    }
}

/// Whether only the fourth tag of shapes can hold it.
bool needsFourth(const Stroke& stroke) {
    const Paint& paint = stroke.paint;
    const bool isLine = stroke.width > 0;
    return paint.light || paint.focus != 0 || paint.spread != Paint::Spread::Pad ||
           (isLine &&
            (paint.kind != Paint::Kind::Solid || stroke.cap != Stroke::Cap::Round ||
             stroke.join != Stroke::Join::Round || !stroke.scalesAcross || !stroke.scalesDown));
}

void writeFullLine(swf::Writer& bytes, const Stroke& stroke) {
    const bool isFilled = stroke.paint.kind != Paint::Kind::Solid;
    bytes.bits(static_cast<unsigned>(stroke.cap), 2);
    bytes.bits(static_cast<unsigned>(stroke.join), 2);
    bytes.bits(isFilled ? 1 : 0, 1);
    bytes.bits(stroke.scalesAcross ? 0 : 1, 1);
    bytes.bits(stroke.scalesDown ? 0 : 1, 1);
    bytes.bits(0, 7);
    bytes.bits(static_cast<unsigned>(stroke.cap), 2);
    if (stroke.join == Stroke::Join::Miter) bytes.u16(3 * 256);
    if (isFilled) {
        writeFill(bytes, stroke.paint);
    } else {
        bytes.color(stroke.paint.tint, true);
    }
}

void writeStyles(swf::Writer& bytes, const Stroke& stroke, bool fourth) {
    const bool isLine = stroke.width > 0;
    bytes.u8(isLine ? 0 : 1);
    if (!isLine) writeFill(bytes, stroke.paint);
    bytes.u8(isLine ? 1 : 0);
    if (!isLine) return;
    bytes.u16(static_cast<unsigned>(rounded(stroke.width * twipsPerPixel)));
    if (fourth) {
        writeFullLine(bytes, stroke);
    } else {
        bytes.color(stroke.paint.tint, true);
    }
}

void writeJump(swf::Writer& bytes, swf::Point to) {
    const std::vector<std::int32_t> place{rounded(to.x), rounded(to.y)};
    const unsigned width = swf::bitsFor(place);
    bytes.bits(width, 5);
    for (const std::int32_t value : place)
        bytes.signedBits(value, width);
}

void writeEdge(swf::Writer& bytes, swf::Point from, const Part& part) {
    const bool curve = part.kind == Part::Kind::Curve;
    const swf::Point middle = curve ? part.control : part.to;
    const std::vector<std::int32_t> steps{rounded(middle.x - from.x), rounded(middle.y - from.y),
                                          rounded(part.to.x - middle.x),
                                          rounded(part.to.y - middle.y)};
    const unsigned width = std::max(2U, swf::bitsFor(steps));
    bytes.bits(curve ? 2 : 3, 2);
    bytes.bits(width - 2, 4);
    if (!curve) bytes.bits(1, 1);
    for (std::size_t index = 0; index < (curve ? 4U : 2U); ++index) {
        bytes.signedBits(steps[index], width);
    }
}

/// The records of an outline, which choose the one style there is when `styled`. `collapsed` leaves
/// each piece of it at where it begins.
void writeOutline(swf::Writer& bytes, const std::vector<Part>& parts, bool isLine, bool styled,
                  bool collapsed) {
    swf::Point pen;
    bool choose = styled;
    for (Part part : parts) {
        if (part.kind == Part::Kind::Jump) {
            // Jumps, and the first one chooses the fill to its right or the line.
            const unsigned style = isLine ? swf::styleChange::Line : swf::styleChange::Fill1;
            bytes.bits(swf::styleChange::Move | (choose ? style : 0), 6);
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

void writeBounds(swf::Writer& bytes, const QRectF& bounds) {
    bytes.rect({bounds.left() * twipsPerPixel, bounds.right() * twipsPerPixel,
                bounds.top() * twipsPerPixel, bounds.bottom() * twipsPerPixel});
}

/// The widths, in bits, of the numbers of styles: of one fill or line.
void writeWidths(swf::Writer& bytes, bool isLine) {
    bytes.bits(isLine ? 0 : 1, 4);
    bytes.bits(isLine ? 1 : 0, 4);
}

}  // namespace

swf::Writer shape(unsigned number, const Drawing& drawing) {
    swf::Writer body;
    body.u16(number);
    writeBounds(body, boundsOf(drawing));
    const bool fourth = std::any_of(drawing.begin(), drawing.end(), needsFourth);
    if (fourth) {
        // The bounds without the lines' widths may be larger; and both kinds of lines.
        writeBounds(body, boundsOf(drawing));
        body.u8(3);
    }
    for (std::size_t index = 0; index < drawing.size(); ++index) {
        const Stroke& stroke = drawing[index];
        const bool isLine = stroke.width > 0;
        // Each lies in a layer of its own, since areas of one layer must not overlap.
        if (index > 0) body.bits(swf::styleChange::NewStyles, 6);
        writeStyles(body, stroke, fourth);
        writeWidths(body, isLine);
        writeOutline(body, outline(stroke.path), isLine, true, false);
    }
    body.bits(0, 6);
    return swf::tag(fourth ? swf::Tag::DefineShape4 : swf::Tag::DefineShape3, body);
}

swf::Writer growing(unsigned number, const Stroke& line) {
    swf::Writer styles;
    styles.u8(0);
    styles.u8(1);
    const auto width = static_cast<unsigned>(rounded(line.width * twipsPerPixel));
    styles.u16(width);
    styles.u16(width);
    styles.color(line.paint.tint, true);
    styles.color(line.paint.tint, true);
    const std::vector<Part> parts = outline(line.path);
    swf::Writer start;
    writeWidths(start, true);
    writeOutline(start, parts, true, true, true);
    swf::Writer end;
    end.bits(0, 8);
    writeOutline(end, parts, true, false, false);
    start.bits(0, 6);
    end.bits(0, 6);

    swf::Writer body;
    body.u16(number);
    writeBounds(body, boundsOf({line}));
    writeBounds(body, boundsOf({line}));
    body.u32(static_cast<std::uint32_t>(styles.get().size() + start.get().size()));
    body.append(styles);
    body.append(start);
    body.append(end);
    return swf::tag(swf::Tag::DefineMorphShape, body);
}

}  // namespace shapeTags

#include "movies/player/styleReaders.h"

#include "base/Failure.h"
#include "movies/format/codes.h"
#include "movies/player/limits.h"

#include <algorithm>

namespace swf {

namespace {

/// What the fills of a shape, and of the start and the end of a morphing one, are read by.
struct Form {
    bool alpha = false;
    bool morphing = false;
};

Color colorAndItsEnd(Reader& reader, Form form, Color& end) {
    const Color color = readColor(reader, form.alpha);
    end = form.morphing ? readColor(reader, form.alpha) : color;
    return color;
}

Matrix matrixAndItsEnd(Reader& reader, Form form, Matrix& end) {
    const Matrix matrix = readMatrix(reader);
    end = form.morphing ? readMatrix(reader) : matrix;
    return matrix;
}

void readGradient(Reader& reader, Form form, bool focal, Fill& fill, Fill& end) {
    fill.matrix = matrixAndItsEnd(reader, form, end.matrix);
    const unsigned head = reader.u8();
    const unsigned spread = head >> 6U;
    fill.spread = spread == 1   ? Fill::Spread::Reflect
                  : spread == 2 ? Fill::Spread::Repeat
                                : Fill::Spread::Pad;
    end.spread = fill.spread;
    fill.linearLight = end.linearLight = (head >> 4U & 3U) == 1;
    const unsigned count = head & 15U;
    if (count == 0) throw Failure("a gradient without a colour");
    for (unsigned index = 0; index < count; ++index) {
        GradientStop stop;
        GradientStop last;
        stop.ratio = reader.u8();
        stop.color = readColor(reader, form.alpha);
        last = stop;
        if (form.morphing) {
            last.ratio = reader.u8();
            last.color = readColor(reader, form.alpha);
        }
        fill.stops.push_back(stop);
        end.stops.push_back(last);
    }
    if (!focal) return;
    fill.focus = std::clamp(reader.i16() / 256.0, -1.0, 1.0);
    end.focus = form.morphing ? std::clamp(reader.i16() / 256.0, -1.0, 1.0) : fill.focus;
}

void readFill(Reader& reader, Form form, Fill& fill, Fill& end) {
    const auto type = static_cast<FillType>(reader.u8());
    switch (type) {
        case FillType::Solid: fill.color = colorAndItsEnd(reader, form, end.color); break;
        case FillType::LinearGradient: fill.kind = Fill::Kind::Linear; break;
        case FillType::RadialGradient:
        case FillType::FocalGradient: fill.kind = Fill::Kind::Radial; break;
        case FillType::RepeatingBitmap:
        case FillType::ClippedBitmap:
        case FillType::RoughRepeatingBitmap:
        case FillType::RoughClippedBitmap:
            fill.kind = Fill::Kind::Bitmap;
            fill.bitmap = reader.u16();
            fill.matrix = matrixAndItsEnd(reader, form, end.matrix);
            fill.repeated =
                type == FillType::RepeatingBitmap || type == FillType::RoughRepeatingBitmap;
            fill.smooth = type == FillType::RepeatingBitmap || type == FillType::ClippedBitmap;
            break;
        default: throw Failure("an unknown fill");
    }
    if (fill.kind == Fill::Kind::Linear || fill.kind == Fill::Kind::Radial) {
        readGradient(reader, form, type == FillType::FocalGradient, fill, end);
    }
    end.kind = fill.kind;
    end.bitmap = fill.bitmap;
    end.repeated = fill.repeated;
    end.smooth = fill.smooth;
}

Line::Cap capOf(unsigned number) {
    return number == 1 ? Line::Cap::None : number == 2 ? Line::Cap::Square : Line::Cap::Round;
}

void readLine(Reader& reader, Form form, bool full, Line& line, Line& end) {
    line.width = reader.u16();
    end.width = form.morphing ? reader.u16() : line.width;
    if (!full) {
        line.color = colorAndItsEnd(reader, form, end.color);
        return;
    }
    line.cap = capOf(reader.bits(2));
    const unsigned join = reader.bits(2);
    const bool filled = reader.bit();
    const bool keepsWidth = reader.bit();
    const bool keepsHeight = reader.bit();
    // A hint for whole pixels, bits without a meaning, and whether the line is closed: Qt draws
    // lines that end where they began as closed ones.
    static_cast<void>(reader.bits(7));
    static_cast<void>(reader.bits(2));
    line.scalesAcross = !keepsWidth;
    line.scalesDown = !keepsHeight;
    line.join = join == 1 ? Line::Join::Bevel : join == 2 ? Line::Join::Miter : Line::Join::Round;
    if (join == 2) line.miter = reader.u16() / 256.0;
    end = {end.width, {}, {}, line.cap, line.join, line.miter, line.scalesAcross, line.scalesDown};
    if (filled) {
        readFill(reader, form, line.fill.emplace(), end.fill.emplace());
    } else {
        line.color = colorAndItsEnd(reader, form, end.color);
    }
}

std::size_t readCount(Reader& reader, bool extended, std::size_t there) {
    std::size_t count = reader.u8();
    if (count == 255 && extended) count = reader.u16();
    if (there + count > limits::stylesPerShape) throw Failure("too many styles");
    return count;
}

}  // namespace

void readStyles(Reader& reader, ShapeVersion version, Shape& shape) {
    const Form form{version >= ShapeVersion::Three, false};
    const bool extended = version >= ShapeVersion::Two;
    for (std::size_t left = readCount(reader, extended, shape.fills.size()); left > 0; --left) {
        Fill ignored;
        readFill(reader, form, shape.fills.emplace_back(), ignored);
    }
    for (std::size_t left = readCount(reader, extended, shape.lines.size()); left > 0; --left) {
        Line ignored;
        readLine(reader, form, version == ShapeVersion::Four, shape.lines.emplace_back(), ignored);
    }
    shape.layers.push_back({shape.fills.size(), shape.lines.size()});
}

void readMorphStyles(Reader& reader, bool second, MorphShape& shape) {
    const Form form{true, true};
    for (std::size_t left = readCount(reader, true, 0); left > 0; --left) {
        readFill(reader, form, shape.start.fills.emplace_back(), shape.end.fills.emplace_back());
    }
    for (std::size_t left = readCount(reader, true, 0); left > 0; --left) {
        readLine(reader, form, second, shape.start.lines.emplace_back(),
                 shape.end.lines.emplace_back());
    }
    shape.start.layers.push_back({shape.start.fills.size(), shape.start.lines.size()});
    shape.end.layers = shape.start.layers;
}

}  // namespace swf

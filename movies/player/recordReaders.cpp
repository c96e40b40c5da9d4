#include "movies/player/recordReaders.h"

#include "base/Failure.h"

namespace swf {

Rect readRect(Reader& reader) {
    reader.align();
    const unsigned width = reader.bits(5);
    Rect rect;
    rect.left = reader.signedBits(width);
    rect.right = reader.signedBits(width);
    rect.top = reader.signedBits(width);
    rect.bottom = reader.signedBits(width);
    reader.align();
    return rect;
}

Matrix readMatrix(Reader& reader) {
    reader.align();
    Matrix matrix;
    if (reader.bit()) {
        const unsigned width = reader.bits(5);
        matrix.xx = reader.fixedBits(width);
        matrix.yy = reader.fixedBits(width);
    }
    if (reader.bit()) {
        const unsigned width = reader.bits(5);
        matrix.yx = reader.fixedBits(width);
        matrix.xy = reader.fixedBits(width);
    }
    const unsigned width = reader.bits(5);
    matrix.dx = reader.signedBits(width);
    matrix.dy = reader.signedBits(width);
    reader.align();
    return matrix;
}

ColorTransform readColorTransform(Reader& reader, bool withAlpha) {
    reader.align();
    ColorTransform transform;
    const bool adds = reader.bit();
    const bool multiplies = reader.bit();
    const unsigned width = reader.bits(4);
    const std::size_t channels = withAlpha ? 4 : 3;
    for (std::size_t index = 0; multiplies && index < channels; ++index) {
        transform.multiply[index] = reader.signedBits(width);
    }
    for (std::size_t index = 0; adds && index < channels; ++index) {
        transform.add[index] = reader.signedBits(width);
    }
    reader.align();
    return transform;
}

Color readColor(Reader& reader, bool withAlpha) {
    Color color;
    color.red = reader.u8();
    color.green = reader.u8();
    color.blue = reader.u8();
    if (withAlpha) color.alpha = reader.u8();
    return color;
}

void skipFilters(Reader& reader) {
    for (unsigned left = reader.u8(); left > 0; --left) {
        switch (reader.u8()) {
            case 0: reader.skip(23); break;                                 // drop shadow
            case 1: reader.skip(9); break;                                  // blur
            case 2: reader.skip(15); break;                                 // glow
            case 3: reader.skip(27); break;                                 // bevel
            case 4:                                                         // gradient glow
            case 7: reader.skip(std::size_t{reader.u8()} * 5 + 19); break;  // gradient bevel
            case 5: {                                                       // convolution
                const std::size_t columns = reader.u8();
                const std::size_t rows = reader.u8();
                reader.skip(8 + 4 * columns * rows + 5);
                break;
            }
            case 6: reader.skip(80); break;  // colours
            default: throw Failure("an unknown filter");
        }
    }
}

}  // namespace swf

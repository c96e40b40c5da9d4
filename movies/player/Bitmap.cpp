#include "movies/player/Bitmap.h"

#include "base/Failure.h"
#include "movies/format/codes.h"
#include "movies/player/Inflater.h"
#include "movies/player/limits.h"

#include <algorithm>

namespace swf {

namespace {

constexpr std::uint32_t opaque = 0xFF000000U;

/// The colour as files hold it; theirs are multiplied by alpha already, which not all keep to.
std::uint32_t readArgb(Reader& reader, bool hasAlpha) {
    const std::uint32_t alpha = hasAlpha ? reader.u8() : 255U;
    std::uint32_t value = alpha;
    for (int channel = 0; channel < 3; ++channel) {
        value = value << 8U | std::min<std::uint32_t>(reader.u8(), alpha);
    }
    return value;
}

std::uint32_t readPalette(Reader& reader, bool hasAlpha) {
    Reader color(reader.bytes(hasAlpha ? 4 : 3));
    const std::uint32_t red = color.u8();
    const std::uint32_t green = color.u8();
    const std::uint32_t blue = color.u8();
    const std::uint32_t alpha = hasAlpha ? color.u8() : 255U;
    return alpha << 24U | std::min(red, alpha) << 16U | std::min(green, alpha) << 8U |
           std::min(blue, alpha);
}

std::uint32_t fromFifteenBits(unsigned high, unsigned low) {
    const unsigned value = high << 8U | low;
    const auto channel = [&](unsigned shift) { return (value >> shift & 31U) * 255U / 31U; };
    return opaque | channel(10) << 16U | channel(5) << 8U | channel(0);
}

/// Rows begin at every fourth byte.
std::size_t stride(std::size_t bytes) { return (bytes + 3) / 4 * 4; }

}  // namespace

Bitmap readPacked(Reader& reader, bool hasAlpha) {
    Bitmap bitmap;
    switch (static_cast<PixelFormat>(reader.u8())) {
        case PixelFormat::Palette: bitmap.kind = Bitmap::Kind::Palette; break;
        case PixelFormat::Pixels15: bitmap.kind = Bitmap::Kind::Pixels15; break;
        case PixelFormat::Pixels32: bitmap.kind = Bitmap::Kind::Pixels32; break;
        default: throw Failure("an unknown kind of pixels");
    }
    bitmap.width = reader.u16();
    bitmap.height = reader.u16();
    bitmap.hasAlpha = hasAlpha;
    if (bitmap.kind == Bitmap::Kind::Palette) bitmap.colors = std::size_t{reader.u8()} + 1;
    bitmap.data = reader.rest();
    return bitmap;
}

Bitmap readJpeg(Reader& reader, int version, std::string_view tables) {
    Bitmap bitmap;
    if (version == 1) bitmap.tables = tables;
    if (version < 3) {
        bitmap.data = reader.rest();
        return bitmap;
    }
    const std::uint32_t length = reader.u32();
    if (version == 4) reader.skip(2);
    bitmap.data = reader.bytes(length);
    bitmap.alpha = reader.rest();
    bitmap.hasAlpha = !bitmap.alpha.empty();
    return bitmap;
}

std::vector<std::uint32_t> unpackPixels(const Bitmap& bitmap) {
    if (bitmap.width == 0 || bitmap.height == 0 ||
        bitmap.height > limits::pixelsPerPicture / bitmap.width) {
        throw Failure("a picture of no fitting size");
    }
    const std::size_t bytesPerPixel = bitmap.kind == Bitmap::Kind::Palette    ? 1
                                      : bitmap.kind == Bitmap::Kind::Pixels15 ? 2
                                                                              : 4;
    const std::size_t row = stride(bitmap.width * bytesPerPixel);
    const std::size_t table = bitmap.colors * (bitmap.hasAlpha ? 4 : 3);
    const std::string bytes = inflate(bitmap.data, table + row * bitmap.height);
    Reader reader(bytes);
    std::vector<std::uint32_t> palette;
    for (std::size_t left = bitmap.colors; left > 0; --left) {
        palette.push_back(readPalette(reader, bitmap.hasAlpha));
    }
    std::vector<std::uint32_t> pixels;
    pixels.reserve(bitmap.width * bitmap.height);
    for (std::size_t y = 0; y < bitmap.height; ++y) {
        Reader line(reader.bytes(row));
        for (std::size_t x = 0; x < bitmap.width; ++x) {
            if (bitmap.kind == Bitmap::Kind::Palette) {
                const std::size_t index = line.u8();
                pixels.push_back(index < palette.size() ? palette[index] : 0);
            } else if (bitmap.kind == Bitmap::Kind::Pixels15) {
                const unsigned high = line.u8();
                pixels.push_back(fromFifteenBits(high, line.u8()));
            } else {
                if (!bitmap.hasAlpha) line.skip(1);
                pixels.push_back(readArgb(line, bitmap.hasAlpha));
            }
        }
    }
    return pixels;
}

}  // namespace swf

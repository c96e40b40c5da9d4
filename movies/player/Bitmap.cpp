#include "movies/player/Bitmap.h"

#include "base/Failure.h"
#include "movies/format/codes.h"
#include "movies/player/Inflater.h"
#include "movies/player/limits.h"

#include <algorithm>
#include <array>
#include <string>

namespace swf {

namespace {

constexpr std::uint32_t opaque = 0xFF000000U;

/// The colour as files hold it: multiplied by alpha already. Not all files keep to that.
std::uint32_t limited(std::uint32_t alpha, std::uint32_t red, std::uint32_t green,
                      std::uint32_t blue) {
    return alpha << 24U | std::min(red, alpha) << 16U | std::min(green, alpha) << 8U |
           std::min(blue, alpha);
}

std::uint32_t fromFifteenBits(std::uint32_t high, std::uint32_t low) {
    const std::uint32_t value = high << 8U | low;
    const auto channel = [&](std::uint32_t shift) { return (value >> shift & 31U) * 255U / 31U; };
    return opaque | channel(10) << 16U | channel(5) << 8U | channel(0);
}

/// Unpacks a picture row by row.
class Rows {
public:
    explicit Rows(const Bitmap& bitmap) : bitmap(bitmap), inflater(bitmap.data) {
        const std::size_t size = bitmap.hasAlpha ? 4 : 3;
        const std::string_view table = next(bitmap.colors * size);
        for (std::size_t at = 0; at < table.size(); at += size) {
            palette.push_back(limited(bitmap.hasAlpha ? byte(table, at + 3) : 255U, byte(table, at),
                                      byte(table, at + 1), byte(table, at + 2)));
        }
    }

    /// Fails where the bytes end.
    void read(std::vector<std::uint32_t>& pixels) {
        const std::size_t size = bitmap.kind == Bitmap::Kind::Palette    ? 1
                                 : bitmap.kind == Bitmap::Kind::Pixels15 ? 2
                                                                         : 4;
        // Rows begin at every fourth byte.
        const std::string_view row = next((bitmap.width * size + 3) / 4 * 4);
        for (std::size_t x = 0; x < bitmap.width; ++x)
            pixels[x] = pixel(row.substr(x * size, size));
    }

private:
    static std::uint32_t byte(std::string_view bytes, std::size_t at) {
        return static_cast<std::uint8_t>(bytes[at]);
    }

    std::uint32_t pixel(std::string_view bytes) const {
        switch (bitmap.kind) {
            case Bitmap::Kind::Palette: {
                const std::size_t index = byte(bytes, 0);
                return index < palette.size() ? palette[index] : 0;
            }
            case Bitmap::Kind::Pixels15: return fromFifteenBits(byte(bytes, 0), byte(bytes, 1));
            default:
                return limited(bitmap.hasAlpha ? byte(bytes, 0) : 255U, byte(bytes, 1),
                               byte(bytes, 2), byte(bytes, 3));
        }
    }

    std::string_view next(std::size_t count) {
        unpacked.clear();
        while (unpacked.size() < count && inflater.unpack(unpacked, count - unpacked.size())) {
        }
        if (unpacked.size() < count) throw Failure("a picture that ends too early");
        return unpacked;
    }

    const Bitmap& bitmap;
    Inflater inflater;
    std::string unpacked;
    std::vector<std::uint32_t> palette;
};

/// The mean colour of each `step` pixels of `step` rows; fewer at the right and lower edge.
class Means {
public:
    Means(std::size_t width, std::size_t step) : step(step), sums((width + step - 1) / step) {}

    void add(const std::vector<std::uint32_t>& row) {
        for (std::size_t x = 0; x < row.size(); ++x) {
            Sum& sum = sums[x / step];
            ++sum.count;
            for (unsigned channel = 0; channel < 4; ++channel)
                sum.channels[channel] += row[x] >> 8U * channel & 255U;
        }
    }
    void take(std::vector<std::uint32_t>& values) {
        for (Sum& sum : sums) {
            std::uint32_t mean = 0;
            for (unsigned channel = 0; channel < 4; ++channel)
                mean |= (sum.channels[channel] + sum.count / 2) / sum.count << 8U * channel;
            values.push_back(mean);
            sum = {};
        }
    }

private:
    struct Sum {
        std::uint32_t count = 0;
        std::array<std::uint32_t, 4> channels{};
    };
    std::size_t step;
    std::vector<Sum> sums;
};

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

Pixels unpackPixels(const Bitmap& bitmap, std::size_t most) {
    if (bitmap.width == 0 || bitmap.height == 0 ||
        bitmap.height > limits::packedPixels / bitmap.width) {
        throw Failure("a picture of no fitting size");
    }
    std::size_t step = 1;
    Pixels pixels{bitmap.width, bitmap.height, {}};
    while (pixels.width * pixels.height > most) {
        ++step;
        pixels.width = (bitmap.width + step - 1) / step;
        pixels.height = (bitmap.height + step - 1) / step;
    }
    Rows rows(bitmap);
    Means means(bitmap.width, step);
    std::vector<std::uint32_t> row(bitmap.width);
    pixels.values.reserve(pixels.width * pixels.height);
    for (std::size_t y = 1; y <= bitmap.height; ++y) {
        rows.read(row);
        if (step == 1) {
            pixels.values.insert(pixels.values.end(), row.begin(), row.end());
            continue;
        }
        means.add(row);
        if (y % step == 0 || y == bitmap.height) means.take(pixels.values);
    }
    return pixels;
}

}  // namespace swf

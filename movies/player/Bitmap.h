#pragma once

#include "movies/format/Reader.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace swf {

/// A picture as it stands in the file. The views are into the movie's bytes.
struct Bitmap {
    /// How its pixels are stored.
    enum class Kind {
        Jpeg,      ///< `data` in a format that holds its own size, `alpha` packed beside it
        Palette,   ///< packed: a table of `colors` colours, then a byte for each pixel
        Pixels15,  ///< packed: two bytes a pixel
        Pixels32,  ///< packed: alpha or nothing, red, green, blue
    };
    Kind kind = Kind::Jpeg;
    std::string_view data;
    std::string_view alpha;
    /// What pictures of this kind have in common, to be read ahead of `data`.
    std::string_view tables;
    bool hasAlpha = false;
    std::size_t width = 0;
    std::size_t height = 0;
    std::size_t colors = 0;
};

/// The picture of a packed tag, behind its number; those of the second tag have alpha.
[[nodiscard]] Bitmap readPacked(Reader& reader, bool hasAlpha);
/// The picture of a JPEG tag, behind its number: the first one (which needs `tables`), the second,
/// the third with alpha, or the fourth.
[[nodiscard]] Bitmap readJpeg(Reader& reader, int version, std::string_view tables);

/// Rows of pixels, as 0xAARRGGBB with colours multiplied by alpha.
struct Pixels {
    std::size_t width = 0;
    std::size_t height = 0;
    std::vector<std::uint32_t> values;
};
/// The pixels of a packed picture. In a picture with more than `most`, whole squares of pixels
/// become one. Fails for one that is damaged or larger than the limit.
[[nodiscard]] Pixels unpackPixels(const Bitmap& bitmap, std::size_t most);

}  // namespace swf

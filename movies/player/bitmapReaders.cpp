#include "movies/player/bitmapReaders.h"

#include "base/Failure.h"

namespace swf {

Bitmap readPacked(Reader& reader, bool hasAlpha) {
    Bitmap bitmap;
    switch (reader.u8()) {
        case 3: bitmap.kind = Bitmap::Kind::Palette; break;
        case 4: bitmap.kind = Bitmap::Kind::Pixels15; break;
        case 5: bitmap.kind = Bitmap::Kind::Pixels32; break;
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

}  // namespace swf

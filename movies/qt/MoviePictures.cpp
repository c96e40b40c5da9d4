#include "movies/qt/MoviePictures.h"

#include "base/Failure.h"
#include "movies/player/Inflater.h"
#include "movies/player/limits.h"

#include <QBuffer>
#include <QImageReader>

#include <algorithm>
#include <string>
#include <string_view>

namespace {

using namespace std::string_view_literals;

/// A picture comes as a rule in one scan or about ten, each of which takes the time of all of it.
constexpr int mostScans = 16;

bool hasTooManyScans(std::string_view data) {
    int scans = 0;
    for (std::size_t at = data.find("\xFF\xDA"sv); at != std::string_view::npos;
         at = data.find("\xFF\xDA"sv, at + 2)) {
        if (++scans > mostScans) return true;
    }
    return false;
}

/// The data as one JPEG file: ends within it, which end the common tables or are there by a mistake
/// of old tools, are taken out with the beginnings behind them.
std::string joined(const swf::Bitmap& bitmap) {
    constexpr auto between = "\xFF\xD9\xFF\xD8"sv;
    std::string all(bitmap.tables);
    all += bitmap.data;
    std::string data;
    std::size_t at = 0;
    for (std::size_t next = all.find(between); next != std::string::npos;
         next = all.find(between, at)) {
        data.append(all, at, next - at);
        at = next + between.size();
    }
    return data.append(all, at);
}

bool isTooLarge(QSize size) {
    return size.isEmpty() ||
           static_cast<std::size_t>(size.width()) >
               swf::limits::pixelsPerPicture / static_cast<std::size_t>(size.height());
}

/// Gives the pixels their alpha, which stands beside them; their colours are multiplied by it
/// already.
void setAlpha(QImage& image, std::string_view packed) {
    const auto width = static_cast<std::size_t>(image.width());
    const std::string alpha =
        swf::inflate(packed, width * static_cast<std::size_t>(image.height()));
    if (alpha.size() < width * static_cast<std::size_t>(image.height())) return;
    image = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    auto next = alpha.begin();
    for (int y = 0; y < image.height(); ++y) {
        QRgb* const row = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::for_each(row, row + width, [&](QRgb& pixel) {
            const int most = static_cast<std::uint8_t>(*next++);
            pixel = qRgba(std::min(qRed(pixel), most), std::min(qGreen(pixel), most),
                          std::min(qBlue(pixel), most), most);
        });
    }
}

QImage readJpeg(const swf::Bitmap& bitmap) {
    if (bitmap.tables.size() + bitmap.data.size() > swf::limits::bytesPerPicture) return {};
    const std::string data = joined(bitmap);
    if (hasTooManyScans(data)) return {};
    QByteArray bytes = QByteArray::fromRawData(data.data(), static_cast<qsizetype>(data.size()));
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, "jpeg");
    reader.setAutoDetectImageFormat(false);
    if (isTooLarge(reader.size())) return {};
    QImage image = reader.read().convertToFormat(QImage::Format_RGB32);
    if (!image.isNull() && bitmap.hasAlpha) setAlpha(image, bitmap.alpha);
    return image;
}

QImage readPacked(const swf::Bitmap& bitmap) {
    const std::vector<std::uint32_t> pixels = swf::unpackPixels(bitmap);
    QImage image(static_cast<int>(bitmap.width), static_cast<int>(bitmap.height),
                 QImage::Format_ARGB32_Premultiplied);
    auto next = pixels.begin();
    for (int y = 0; y < image.height(); ++y) {
        std::copy_n(next, bitmap.width, reinterpret_cast<QRgb*>(image.scanLine(y)));
        next += static_cast<std::ptrdiff_t>(bitmap.width);
    }
    return image;
}

}  // namespace

bool MoviePictures::isPacked(std::uint16_t number) const {
    return !unpacked.contains(number) && movie->find<swf::Bitmap>(number) != nullptr;
}

QImage MoviePictures::find(std::uint16_t number, bool mayUnpack) {
    const auto found = unpacked.find(number);
    if (found != unpacked.end()) return found->second;
    const auto* bitmap = movie->find<swf::Bitmap>(number);
    if (bitmap == nullptr || !mayUnpack) return {};
    QImage image = unpack(*bitmap);
    const std::size_t size =
        static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height());
    if (pixels + size > swf::limits::pixels) image = {};
    if (!image.isNull()) pixels += size;
    return unpacked[number] = image;
}

QImage MoviePictures::unpack(const swf::Bitmap& bitmap) const {
    QImage image;
    attempt([&] {
        image = bitmap.kind == swf::Bitmap::Kind::Jpeg ? readJpeg(bitmap) : readPacked(bitmap);
    });
    return image;
}

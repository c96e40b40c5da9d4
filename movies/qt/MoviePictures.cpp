#include "movies/qt/MoviePictures.h"

#include "base/Failure.h"
#include "movies/player/Inflater.h"
#include "movies/player/limits.h"

#include <QBuffer>
#include <QImageReader>
#include <QThreadPool>

#include <algorithm>
#include <chrono>
#include <string>
#include <string_view>
#include <utility>

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

std::size_t pixelsOf(QSize size) {
    return static_cast<std::size_t>(size.width()) * static_cast<std::size_t>(size.height());
}

/// Gives the pixels their alpha, which stands beside them for a picture of `size`; their colours
/// are multiplied by it already.
void setAlpha(QImage& image, QSize size, std::string_view packed) {
    const std::string alpha = swf::inflate(packed, pixelsOf(size));
    if (alpha.size() < pixelsOf(size)) return;
    image = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y) {
        QRgb* const row = reinterpret_cast<QRgb*>(image.scanLine(y));
        const qint64 line = qint64{y} * size.height() / image.height() * size.width();
        for (int x = 0; x < image.width(); ++x) {
            const qint64 at = line + qint64{x} * size.width() / image.width();
            const int most = static_cast<std::uint8_t>(alpha[static_cast<std::size_t>(at)]);
            row[x] = qRgba(std::min(qRed(row[x]), most), std::min(qGreen(row[x]), most),
                           std::min(qBlue(row[x]), most), most);
        }
    }
}

MoviePicture readJpeg(const swf::Bitmap& bitmap) {
    if (bitmap.tables.size() + bitmap.data.size() > swf::limits::bytesPerPicture) return {};
    const std::string data = joined(bitmap);
    if (hasTooManyScans(data)) return {};
    QByteArray bytes = QByteArray::fromRawData(data.data(), static_cast<qsizetype>(data.size()));
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, "jpeg");
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    if (size.isEmpty() || pixelsOf(size) > swf::limits::packedPixels) return {};
    QSize wanted = size;
    for (int step = 2; pixelsOf(wanted) > swf::limits::pixelsPerPicture; ++step)
        wanted = (size / step).expandedTo({1, 1});
    if (wanted != size) reader.setScaledSize(wanted);
    QImage image = reader.read().convertToFormat(QImage::Format_RGB32);
    if (!image.isNull() && bitmap.hasAlpha) setAlpha(image, size, bitmap.alpha);
    return {image, size};
}

MoviePicture readPacked(const swf::Bitmap& bitmap) {
    const swf::Pixels pixels = swf::unpackPixels(bitmap, swf::limits::pixelsPerPicture);
    QImage image(static_cast<int>(pixels.width), static_cast<int>(pixels.height),
                 QImage::Format_ARGB32_Premultiplied);
    auto next = pixels.values.begin();
    for (int y = 0; y < image.height(); ++y) {
        std::copy_n(next, pixels.width, reinterpret_cast<QRgb*>(image.scanLine(y)));
        next += static_cast<std::ptrdiff_t>(pixels.width);
    }
    return {image, {static_cast<int>(bitmap.width), static_cast<int>(bitmap.height)}};
}

MoviePicture unpack(const swf::Bitmap& bitmap) {
    MoviePicture picture;
    attempt([&] {
        picture = bitmap.kind == swf::Bitmap::Kind::Jpeg ? readJpeg(bitmap) : readPacked(bitmap);
    });
    return picture;
}

/// Whether unpacking takes so little that nobody waits for it.
bool isSmall(const swf::Bitmap& bitmap) {
    constexpr std::size_t most = swf::limits::pixelsAtOnce;
    if (bitmap.tables.size() + bitmap.data.size() > most) return false;
    if (bitmap.kind != swf::Bitmap::Kind::Jpeg) return bitmap.width * bitmap.height <= most;
    const std::string data = joined(bitmap);
    QByteArray bytes = QByteArray::fromRawData(data.data(), static_cast<qsizetype>(data.size()));
    QBuffer buffer(&bytes);
    return pixelsOf(QImageReader(&buffer, "jpeg").size().expandedTo({0, 0})) <= most;
}

}  // namespace

bool MoviePictures::isPacked(std::uint16_t number) const {
    return !unpacked.contains(number) && movie->find<swf::Bitmap>(number) != nullptr;
}

MoviePicture MoviePictures::find(std::uint16_t number, bool mayUnpack) {
    takeResult();
    const auto found = unpacked.find(number);
    if (found != unpacked.end()) return found->second;
    const auto* bitmap = movie->find<swf::Bitmap>(number);
    if (bitmap == nullptr || (current && current->number == number)) return {};
    if (isSmall(*bitmap)) return mayUnpack ? keep(number, unpack(*bitmap)) : MoviePicture();
    if (!current) begin(number, *bitmap);
    return {};
}

void MoviePictures::begin(std::uint16_t number, const swf::Bitmap& bitmap) {
    // The movie stays while the thread reads it, whatever becomes of the rest.
    auto work = std::make_shared<std::packaged_task<MoviePicture()>>(
        [kept = movie, &bitmap] { return unpack(bitmap); });
    current = {number, work->get_future()};
    QThreadPool::globalInstance()->start([work] { (*work)(); });
}

void MoviePictures::takeResult() {
    using namespace std::chrono_literals;
    if (!current || current->result.wait_for(0s) != std::future_status::ready) return;
    Work done = *std::exchange(current, std::nullopt);
    keep(done.number, done.result.get());
}

MoviePicture MoviePictures::keep(std::uint16_t number, MoviePicture picture) {
    const std::size_t size = pixelsOf(picture.image.size());
    if (pixels + size > swf::limits::pixels) picture = {};
    if (!picture.image.isNull()) pixels += size;
    return unpacked[number] = picture;
}

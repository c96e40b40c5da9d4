#include "movies/qt/ShapePainter.h"

#include "movies/player/limits.h"
#include "movies/qt/MovieBrushes.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

namespace {

/// Whether a transform changes nothing but alpha, by a factor.
bool onlyFades(const swf::ColorTransform& colors) {
    swf::ColorTransform fading;
    fading.multiply[3] = colors.multiply[3];
    return colors == fading && colors.multiply[3] >= 0 && colors.multiply[3] <= 256;
}

}  // namespace

ShapePainter::ShapePainter(std::shared_ptr<const swf::Movie> movie, Canvas& canvas)
    : movie(movie), canvas(canvas), pictures(std::move(movie)) {}

void ShapePainter::begin() {
    mayUnpack = true;
    isPictureMissing = false;
    progressed = false;
    pictures.takeResult();
    if (postponed != nullptr) static_cast<void>(paintingsOf(*std::exchange(postponed, nullptr)));
}

void ShapePainter::draw(const swf::Instance& instance, const Pose& pose) {
    if (const auto* shape = movie->find<swf::Shape>(instance.character)) {
        if (const auto* ready = paintingsOf(*shape)) drawPaintings(*ready, *shape, pose);
    } else if (const auto* morph = movie->find<swf::MorphShape>(instance.character)) {
        if (const auto now = morphed(*morph, instance.ratio)) {
            drawPaintings(swf::paintings(*now), *now, pose);
        }
    } else if (const auto* text = movie->find<swf::Text>(instance.character)) {
        swf::Fill fill;
        eachGlyph(*text, pose, [&](const auto& painting, swf::Color color, const Pose& place) {
            fill.color = color;
            drawFill(painting, fill, place);
        });
    }
}

void ShapePainter::eachArea(const swf::Instance& instance, const swf::Matrix& matrix,
                            const std::function<void(const moviePaths::Path&)>& use) {
    const auto useAreas = [&](const std::vector<swf::Painting>& paintings) {
        for (const swf::Painting& painting : paintings) {
            if (!painting.isLine) use(pathOf(painting, matrix));
        }
    };
    if (const auto* shape = movie->find<swf::Shape>(instance.character)) {
        if (const auto* ready = paintingsOf(*shape)) useAreas(*ready);
    } else if (const auto* morph = movie->find<swf::MorphShape>(instance.character)) {
        if (const auto now = morphed(*morph, instance.ratio)) useAreas(swf::paintings(*now));
    } else if (const auto* text = movie->find<swf::Text>(instance.character)) {
        eachGlyph(*text, {matrix, {}}, [&](const auto& painting, swf::Color, const Pose& place) {
            use(pathOf(painting, place.matrix));
        });
    }
}

std::optional<swf::Shape> ShapePainter::morphed(const swf::MorphShape& morph, std::uint16_t ratio) {
    if (!canvas.budget.take(DrawingCosts::morphing(morph.start))) return {};
    return morph.at(ratio);
}

void ShapePainter::drawPaintings(const std::vector<swf::Painting>& paintings,
                                 const swf::Shape& shape, const Pose& pose) {
    for (const swf::Painting& painting : paintings) {
        if (canvas.budget.exceeded()) return;
        if (painting.isLine) {
            drawLine(painting, shape.lines[painting.style], pose);
        } else {
            drawFill(painting, shape.fills[painting.style], pose);
        }
    }
}

void ShapePainter::drawFill(const swf::Painting& painting, const swf::Fill& fill,
                            const Pose& pose) {
    const moviePaths::Path path = pathOf(painting, pose.matrix);
    if (!path.usable || !path.bounds.intersects(canvas.view.visible)) return;
    if (fill.kind == swf::Fill::Kind::Bitmap) {
        drawPicture(path, fill, pose);
        return;
    }
    const bool isOpaque = pose.colors.apply(fill.color).alpha == 255;
    fillPath(path, movieBrushes::brush(fill, pose.matrix, pose.colors),
             canvas.costs.fill(path, fill, isOpaque));
}

void ShapePainter::fillPath(const moviePaths::Path& path, const QBrush& brush, double cost) {
    const int bands = canvas.costs.bands(path, cost);
    // What is filled in bands is begun in any case, and ends when the time is over.
    if (!canvas.budget.take(bands == 1 ? cost : std::min(cost, canvas.budget.left()))) return;
    if (bands == 1) {
        canvas.painter->fillPath(path.path, brush);
        return;
    }
    // Bands end between two rows of pixels, so that nothing is seen of them.
    const QRectF seen = path.bounds & canvas.view.visible;
    const double shift = canvas.painter->deviceTransform().dy();
    const double pixel = 1 / canvas.view.pixelsPerUnit;
    const double height = std::ceil(seen.height() / pixel / bands) * pixel;
    const double first = (std::floor(seen.top() / pixel + shift) - shift) * pixel;
    const moviePaths::Bands parts(path.path);
    std::optional<double> before;
    for (double top = first; top < seen.bottom() && canvas.budget.goesOn(); top += height) {
        const double left = canvas.budget.left();
        // The next part takes about as long as the last one.
        if (before && (*before - left) / 2 > left) return canvas.budget.end();
        before = left;
        canvas.painter->fillPath(parts.between(top, top + height), brush);
    }
}

std::optional<QBrush> ShapePainter::pictureBrush(const QRectF& area, const swf::Fill& fill,
                                                 const Pose& pose) {
    const swf::Matrix place = pose.matrix.after(fill.matrix);
    if (!place.usable()) return {};
    // One small picture a drawing is unpacked; large ones come when they are ready.
    const bool wasPacked = pictures.isPacked(fill.bitmap);
    const auto [picture, size] =
        pictures.find(fill.bitmap, mayUnpack && canvas.budget.has(DrawingCosts::unpacking));
    const bool isPacked = pictures.isPacked(fill.bitmap);
    isPictureMissing = isPictureMissing || isPacked;
    if (wasPacked && !isPacked) {
        mayUnpack = false;
        progressed = true;
    }
    if (picture.isNull()) return {};
    QImage image = picture;
    QTransform way = moviePaths::toQt(place);
    // It may have fewer pixels than in the file.
    way.scale(double{1} * size.width() / image.width(), double{1} * size.height() / image.height());
    if (!onlyFades(pose.colors)) {
        const double cost = DrawingCosts::recoloring(double{1} * image.width() * image.height());
        if (!canvas.budget.take(std::min(cost, canvas.budget.left()))) return {};
        auto recolored =
            movieBrushes::recolored(image, pose.colors, [&] { return canvas.budget.goesOn(); });
        if (!recolored) return {};
        image = *std::move(recolored);
    }
    if (!fill.repeated) {
        const auto extended = extend(image, way, area & canvas.view.visible, fill.smooth);
        if (!extended) return {};
        way = *extended;
    }
    QBrush brush(image);
    brush.setTransform(way);
    return brush;
}

std::optional<QTransform> ShapePainter::extend(QImage& image, QTransform place, const QRectF& area,
                                               bool smooth) {
    // Smooth pixels are mixed with those around, so Qt must find one beyond each edge.
    const double margin = smooth && place.type() > QTransform::TxTranslate ? 1 : 0;
    const auto wantedPart = [&] {
        const QRectF seen = place.inverted().mapRect(area);
        return seen.adjusted(-margin, -margin, margin, margin).toAlignedRect();
    };
    QRect wanted = wantedPart();
    if (image.rect().contains(wanted)) return place;
    // The surface has far fewer pixels than such a picture: one of half the size shows no less.
    constexpr auto most = static_cast<double>(swf::limits::pixelsPerPicture);
    while (double{1} * wanted.width() * wanted.height() > most) {
        if (image.width() < 2 || image.height() < 2) return {};
        const QSize size = image.size();
        if (!canvas.budget.take(DrawingCosts::halving(double{1} * size.width() * size.height())))
            return {};
        image = image.scaled(size / 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        place.scale(double{1} * size.width() / image.width(),
                    double{1} * size.height() / image.height());
        wanted = wantedPart();
    }
    if (!canvas.budget.take(
            DrawingCosts::extending(double{1} * wanted.width() * wanted.height()))) {
        return {};
    }
    image = movieBrushes::extended(image, wanted);
    return place.translate(wanted.left(), wanted.top());
}

void ShapePainter::drawPicture(const moviePaths::Path& path, const swf::Fill& fill,
                               const Pose& pose) {
    const std::optional<QBrush> brush = pictureBrush(path.bounds, fill, pose);
    if (!brush) return;
    const PictureScaling scaling =
        brush->transform().type() <= QTransform::TxTranslate && canvas.view.pixelsPerUnit == 1
            ? PictureScaling::None
        : fill.smooth ? PictureScaling::Smooth
                      : PictureScaling::Rough;
    const bool fades = onlyFades(pose.colors) && pose.colors.multiply[3] != 256;
    const bool hasAlpha = fades || brush->textureImage().hasAlphaChannel();
    canvas.painter->save();
    if (fades) canvas.painter->setOpacity(pose.colors.multiply[3] / 256.0);
    canvas.painter->setRenderHint(QPainter::SmoothPixmapTransform, fill.smooth);
    fillPath(path, *brush, canvas.costs.picture(path, scaling, hasAlpha));
    canvas.painter->restore();
}

void ShapePainter::drawLine(const swf::Painting& painting, const swf::Line& line,
                            const Pose& pose) {
    const moviePaths::Path path = pathOf(painting, pose.matrix);
    if (!path.usable) return;
    QPen pen = movieBrushes::pen(line, pose.matrix, 1 / canvas.view.pixelsPerUnit);
    const double margin = pen.widthF();
    const QRectF bounds = path.bounds.adjusted(-margin, -margin, margin, margin);
    if (!bounds.intersects(canvas.view.visible)) return;
    if (line.fill && line.fill->kind == swf::Fill::Kind::Bitmap) {
        const std::optional<QBrush> brush = pictureBrush(bounds, *line.fill, pose);
        if (!brush) return;
        pen.setBrush(*brush);
    } else if (line.fill) {
        if (!canvas.budget.take(DrawingCosts::gradient(*line.fill))) return;
        pen.setBrush(movieBrushes::brush(*line.fill, pose.matrix, pose.colors));
    } else {
        pen.setColor(movieBrushes::color(pose.colors.apply(line.color)));
    }
    const double cost = canvas.costs.line(path, pen.widthF());
    if (cost <= DrawingCosts::atOnce) {
        if (canvas.budget.take(cost)) canvas.painter->strokePath(path.path, pen);
        return;
    }
    if (DrawingCosts::isThin(pen.widthF(), canvas.view)) {
        const auto all = static_cast<double>(painting.edges.size());
        const auto most = static_cast<std::size_t>(std::ceil(all * DrawingCosts::atOnce / cost));
        const std::span<const swf::Edge> edges(painting.edges);
        if (!canvas.budget.take(std::min(cost, canvas.budget.left()))) return;
        for (std::size_t first = 0; first < edges.size() && canvas.budget.goesOn(); first += most) {
            const auto part = edges.subspan(first, std::min(most, edges.size() - first));
            canvas.painter->strokePath(moviePaths::way(part, pose.matrix, canvas.view).path, pen);
        }
        return;
    }
    // A wide line becomes an area, which can be filled in bands. Half of the time is for making it,
    // so that some of it is seen.
    const double reserved = canvas.budget.left() / 2;
    bool isWhole = true;
    const auto goesOn = [&] {
        return isWhole = canvas.budget.goesOn() && canvas.budget.left() > reserved;
    };
    const moviePaths::Path outline =
        moviePaths::lineOutline(painting.edges, pose.matrix, pen, canvas.view, goesOn);
    if (outline.usable) {
        fillPath(outline, pen.brush(), std::max(cost, canvas.costs.fill(outline, {}, false)));
    }
    if (!isWhole) canvas.budget.end();
}

void ShapePainter::eachGlyph(
    const swf::Text& text, const Pose& pose,
    const std::function<void(const swf::Painting&, swf::Color, const Pose&)>& use) {
    for (const swf::Glyph& glyph : text.glyphs) {
        if (!canvas.budget.take(DrawingCosts::glyph)) return;
        const auto* font = movie->find<swf::Font>(glyph.font);
        if (font == nullptr || glyph.index >= font->glyphs.size()) continue;
        const auto* ready = paintingsOf(font->glyphs[glyph.index]);
        if (ready == nullptr) return;
        const double scale = glyph.height / font->em;
        const swf::Matrix inText{scale, 0, 0, scale, glyph.place.x, glyph.place.y};
        const Pose place{pose.matrix.after(text.matrix).after(inText), pose.colors};
        for (const swf::Painting& painting : *ready)
            use(painting, glyph.color, place);
    }
}

const std::vector<swf::Painting>* ShapePainter::paintingsOf(const swf::Shape& shape) {
    const auto found = made.find(&shape);
    if (found != made.end()) return &found->second;
    const double cost = DrawingCosts::ordering(shape);
    if (!canvas.budget.has(cost)) {
        postponed = &shape;
        return nullptr;
    }
    if (!canvas.budget.take(cost)) return nullptr;
    progressed = true;
    return &made.emplace(&shape, swf::paintings(shape)).first->second;
}

moviePaths::Path ShapePainter::pathOf(const swf::Painting& painting, const swf::Matrix& matrix) {
    moviePaths::Path none;
    none.usable = false;
    if (!canvas.budget.take(DrawingCosts::path(painting.edges.size()))) return none;
    moviePaths::Path path = painting.isLine
                                ? moviePaths::way(painting.edges, matrix, canvas.view)
                                : moviePaths::outline(painting.edges, matrix, canvas.view);
    // The path is there now, whatever it took.
    canvas.budget.add(DrawingCosts::segment * path.segments);
    return path;
}

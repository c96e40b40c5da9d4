#include "movies/qt/MoviePainter.h"

#include "movies/player/limits.h"
#include "movies/qt/MovieBrushes.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// What takes less is drawn anew each time.
constexpr double leastCost = DrawingBudget::whole / 8;

bool isInvisible(const swf::ColorTransform& colors) {
    return colors.multiply[3] <= 0 && colors.add[3] <= 0;
}

/// Changes nothing but alpha, by a factor.
bool onlyFades(const swf::ColorTransform& colors) {
    swf::ColorTransform fading;
    fading.multiply[3] = colors.multiply[3];
    return colors == fading && colors.multiply[3] >= 0 && colors.multiply[3] <= 256;
}

}  // namespace

MoviePainter::MoviePainter(std::shared_ptr<const swf::Movie> movie, std::function<double()> clock)
    : movie(movie), pictures(std::move(movie)), clock(std::move(clock)) {}

MoviePainter::Outcome MoviePainter::draw(QPainter& target, const QRectF& surface,
                                         const swf::DisplayList& list, const swf::Matrix& matrix) {
    painter = &target;
    view = {surface, std::sqrt(std::abs(target.deviceTransform().determinant()))};
    const QTransform toPixels = target.deviceTransform();
    const QRect pixels = toPixels.mapRect(surface).toAlignedRect();
    imageSize = pixels.size();
    imagePlace = toPixels.inverted().mapRect(QRectF(pixels));
    toImage = toPixels * QTransform::fromTranslate(-pixels.x(), -pixels.y());
    costs = DrawingCosts(view);
    budget = DrawingBudget(clock);
    mayUnpack = true;
    unfinished = false;
    progressed = false;
    pictures.takeResult();
    if (postponed != nullptr) static_cast<void>(paintingsOf(*std::exchange(postponed, nullptr)));
    target.save();
    target.setClipRect(surface, Qt::IntersectClip);
    target.setRenderHint(QPainter::Antialiasing);
    target.setPen(Qt::NoPen);
    const Pose pose{matrix, {}};
    drawList(list, drawStill(list, pose), pose);
    target.restore();
    lastCost = budget.taken();
    // Without progress another drawing would show no more. What is made ready now, here or by the
    // thread that unpacks, takes no time then, and neither does what stands still.
    const bool goesOn = progressed || pictures.isBusy() || still.isNew() || mayAddStill();
    const bool isPartial = unfinished || budget.exceeded();
    return {budget.taken(), budget.exceeded(), postponed != nullptr || (goesOn && isPartial)};
}

swf::DisplayList::const_iterator MoviePainter::drawStill(const swf::DisplayList& list,
                                                         const Pose& pose) {
    still.compare(list, pose.matrix, toImage, imageSize);
    auto next = std::next(list.begin(), static_cast<std::ptrdiff_t>(still.shown()));
    const double cost = costs.wholePicture();
    bool failed = false;
    if (mayAddStill()) {
        QPainter* const below = painter;
        QPainter layer;
        beginImage(layer, still.image);
        painter = &layer;
        budget.reserve(cost);
        // The other half of the time is for what moves.
        for (; !failed && still.hasMore() && budget.left() > DrawingBudget::whole / 2; ++next) {
            const swf::Instance& instance = next->second;
            drawInstance(instance, {pose.matrix.after(instance.matrix), instance.colors});
            failed = budget.exceeded() || unfinished || postponed != nullptr;
            if (!failed) still.add();
        }
        budget.release(cost);
        painter = below;
    }
    if (!still.image.isNull()) {
        budget.add(cost);
        painter->drawImage(imagePlace, still.image);
    }
    // Part of a thing is there, which can be neither left out nor drawn again.
    if (failed && budget.exceeded()) {
        still.giveUp();
    } else if (failed) {
        still.drop();
    }
    return next;
}

bool MoviePainter::mayAddStill() const {
    const double cost = costs.wholePicture();
    const bool isWorthIt = still.shown() > 0 || lastCost > std::max(2 * cost, leastCost);
    return isWorthIt && still.hasMore() && cost < DrawingBudget::whole / 4;
}

void MoviePainter::drawList(const swf::DisplayList& list, swf::DisplayList::const_iterator first,
                            const Pose& pose) {
    std::vector<std::pair<std::uint16_t, std::unique_ptr<Layer>>> masks;
    const auto endLast = [&] {
        endMask(std::move(masks.back().second));
        masks.pop_back();
    };
    for (; first != list.end(); ++first) {
        const auto& [depth, instance] = *first;
        while (!masks.empty() && depth > masks.back().first)
            endLast();
        if (!budget.take(DrawingCosts::instance)) break;
        const Pose inner{pose.matrix.after(instance.matrix), pose.colors.after(instance.colors)};
        if (instance.clipDepth == 0) {
            drawInstance(instance, inner);
            continue;
        }
        Mask mask;
        collect(instance, inner.matrix, mask);
        const bool isLarge = mask.cost > DrawingCosts::atOnce;
        if (!budget.take(isLarge ? costs.layer() : mask.cost)) break;
        masks.emplace_back(instance.clipDepth, beginMask(mask));
    }
    while (!masks.empty())
        endLast();
}

void MoviePainter::beginImage(QPainter& on, QImage& image) const {
    if (image.isNull()) {
        image = QImage(imageSize, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
    }
    on.begin(&image);
    on.setTransform(toImage);
    on.setRenderHint(QPainter::Antialiasing);
    on.setPen(Qt::NoPen);
}

std::unique_ptr<MoviePainter::Layer> MoviePainter::beginMask(const Mask& mask) {
    if (mask.cost <= DrawingCosts::atOnce) {
        painter->save();
        painter->setClipPath(mask.outline.path, Qt::IntersectClip);
        return nullptr;
    }
    budget.reserve(costs.layer());
    auto layer = std::make_unique<Layer>();
    layer->below = painter;
    // Before what it bounds, so that the first things are seen when the time ends among them.
    QPainter maskPainter;
    beginImage(maskPainter, layer->mask);
    painter = &maskPainter;
    fillPath(mask.outline, Qt::black, mask.cost);
    beginImage(layer->painter, layer->image);
    painter = &layer->painter;
    return layer;
}

void MoviePainter::endMask(std::unique_ptr<Layer> layer) {
    if (!layer) {
        painter->restore();
        return;
    }
    painter->resetTransform();
    painter->setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter->drawImage(0, 0, layer->mask);
    painter->end();
    painter = layer->below;
    painter->drawImage(imagePlace, layer->image);
    budget.release(costs.layer());
}

void MoviePainter::drawInstance(const swf::Instance& instance, const Pose& pose) {
    if (!pose.matrix.usable() || isInvisible(pose.colors)) return;
    if (const swf::DisplayList* inner = instance.inner()) {
        drawList(*inner, inner->begin(), pose);
    } else if (const auto* shape = movie->find<swf::Shape>(instance.character)) {
        if (const auto* ready = paintingsOf(*shape)) drawShape(*ready, *shape, pose);
    } else if (const auto* morph = movie->find<swf::MorphShape>(instance.character)) {
        if (!budget.take(DrawingCosts::morphing(morph->start))) return;
        const swf::Shape shape = morph->at(instance.ratio);
        drawShape(swf::paintings(shape), shape, pose);
    } else if (const auto* text = movie->find<swf::Text>(instance.character)) {
        drawText(*text, pose);
    }
}

void MoviePainter::drawShape(const std::vector<swf::Painting>& paintings, const swf::Shape& shape,
                             const Pose& pose) {
    for (const swf::Painting& painting : paintings) {
        if (budget.exceeded()) return;
        if (painting.isLine) {
            drawLine(painting, shape.lines[painting.style], pose);
        } else {
            drawFill(painting, shape.fills[painting.style], pose);
        }
    }
}

void MoviePainter::drawFill(const swf::Painting& painting, const swf::Fill& fill,
                            const Pose& pose) {
    const moviePaths::Path path = pathOf(painting, pose.matrix);
    if (!path.usable || !path.bounds.intersects(view.visible)) return;
    if (fill.kind == swf::Fill::Kind::Bitmap) {
        drawPicture(path, fill, pose);
        return;
    }
    const bool isOpaque = pose.colors.apply(fill.color).alpha == 255;
    fillPath(path, movieBrushes::brush(fill, pose.matrix, pose.colors),
             costs.fill(path, fill, isOpaque));
}

void MoviePainter::fillPath(const moviePaths::Path& path, const QBrush& brush, double cost) {
    const int bands = costs.bands(path, cost);
    // What is filled in bands is begun in any case, and ends when the time is over.
    if (!budget.take(bands == 1 ? cost : std::min(cost, budget.left()))) return;
    if (bands == 1) {
        painter->fillPath(path.path, brush);
        return;
    }
    // Bands end between two rows of pixels, so that nothing is seen of them.
    const QRectF seen = path.bounds & view.visible;
    const double shift = painter->deviceTransform().dy();
    const double pixel = 1 / view.pixelsPerUnit;
    const double height = std::ceil(seen.height() / pixel / bands) * pixel;
    const double first = (std::floor(seen.top() / pixel + shift) - shift) * pixel;
    const moviePaths::Bands parts(path.path);
    std::optional<double> before;
    for (double top = first; top < seen.bottom() && budget.goesOn(); top += height) {
        const double left = budget.left();
        // The next part takes about as long as the last one.
        if (before && (*before - left) / 2 > left) return budget.end();
        before = left;
        painter->fillPath(parts.between(top, top + height), brush);
    }
}

std::optional<QBrush> MoviePainter::pictureBrush(const QRectF& area, const swf::Fill& fill,
                                                 const Pose& pose) {
    const swf::Matrix place = pose.matrix.after(fill.matrix);
    if (!place.usable()) return {};
    // One small picture a drawing is unpacked; large ones come when they are ready.
    const bool wasPacked = pictures.isPacked(fill.bitmap);
    const auto [picture, size] =
        pictures.find(fill.bitmap, mayUnpack && budget.has(DrawingCosts::unpacking));
    const bool isPacked = pictures.isPacked(fill.bitmap);
    unfinished = unfinished || isPacked;
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
        if (!budget.take(std::min(cost, budget.left()))) return {};
        auto recolored =
            movieBrushes::recolored(image, pose.colors, [&] { return budget.goesOn(); });
        if (!recolored) return {};
        image = *std::move(recolored);
    }
    if (!fill.repeated) {
        const auto extended = extend(image, way, area & view.visible, fill.smooth);
        if (!extended) return {};
        way = *extended;
    }
    QBrush brush(image);
    brush.setTransform(way);
    return brush;
}

std::optional<QTransform> MoviePainter::extend(QImage& image, QTransform place, const QRectF& area,
                                               bool smooth) {
    // Smooth pixels are mixed with those around, so Qt must find one beyond each edge.
    const double margin = smooth && place.type() > QTransform::TxTranslate ? 1 : 0;
    const auto wantedPart = [&] {
        const QRectF seen = place.inverted().mapRect(area);
        return seen.adjusted(-margin, -margin, margin, margin).toAlignedRect();
    };
    QRect wanted = wantedPart();
    if (image.rect().contains(wanted)) return place;
    // So many pixels on so few of the surface: a picture of half the size shows no less.
    constexpr auto most = static_cast<double>(swf::limits::pixelsPerPicture);
    while (double{1} * wanted.width() * wanted.height() > most) {
        if (image.width() < 2 || image.height() < 2) return {};
        const QSize size = image.size();
        if (!budget.take(DrawingCosts::halving(double{1} * size.width() * size.height())))
            return {};
        image = image.scaled(size / 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        place.scale(double{1} * size.width() / image.width(),
                    double{1} * size.height() / image.height());
        wanted = wantedPart();
    }
    if (!budget.take(DrawingCosts::extending(double{1} * wanted.width() * wanted.height()))) {
        return {};
    }
    image = movieBrushes::extended(image, wanted);
    return place.translate(wanted.left(), wanted.top());
}

void MoviePainter::drawPicture(const moviePaths::Path& path, const swf::Fill& fill,
                               const Pose& pose) {
    const std::optional<QBrush> brush = pictureBrush(path.bounds, fill, pose);
    if (!brush) return;
    const PictureScaling scaling =
        brush->transform().type() <= QTransform::TxTranslate && view.pixelsPerUnit == 1
            ? PictureScaling::None
        : fill.smooth ? PictureScaling::Smooth
                      : PictureScaling::Rough;
    const bool fades = onlyFades(pose.colors) && pose.colors.multiply[3] != 256;
    const bool hasAlpha = fades || brush->textureImage().hasAlphaChannel();
    painter->save();
    if (fades) painter->setOpacity(pose.colors.multiply[3] / 256.0);
    painter->setRenderHint(QPainter::SmoothPixmapTransform, fill.smooth);
    fillPath(path, *brush, costs.picture(path, scaling, hasAlpha));
    painter->restore();
}

void MoviePainter::drawLine(const swf::Painting& painting, const swf::Line& line,
                            const Pose& pose) {
    const moviePaths::Path path = pathOf(painting, pose.matrix);
    if (!path.usable) return;
    QPen pen = movieBrushes::pen(line, pose.matrix, 1 / view.pixelsPerUnit);
    const double margin = pen.widthF();
    const QRectF bounds = path.bounds.adjusted(-margin, -margin, margin, margin);
    if (!bounds.intersects(view.visible)) return;
    if (line.fill && line.fill->kind == swf::Fill::Kind::Bitmap) {
        const std::optional<QBrush> brush = pictureBrush(bounds, *line.fill, pose);
        if (!brush) return;
        pen.setBrush(*brush);
    } else if (line.fill) {
        if (!budget.take(DrawingCosts::gradient(*line.fill))) return;
        pen.setBrush(movieBrushes::brush(*line.fill, pose.matrix, pose.colors));
    } else {
        pen.setColor(movieBrushes::color(pose.colors.apply(line.color)));
    }
    const double cost = costs.line(path, pen.widthF());
    if (cost <= DrawingCosts::atOnce) {
        if (budget.take(cost)) painter->strokePath(path.path, pen);
        return;
    }
    if (DrawingCosts::isThin(pen.widthF(), view)) {
        const auto all = static_cast<double>(painting.edges.size());
        const auto most = static_cast<std::size_t>(std::ceil(all * DrawingCosts::atOnce / cost));
        const std::span<const swf::Edge> edges(painting.edges);
        if (!budget.take(std::min(cost, budget.left()))) return;
        for (std::size_t first = 0; first < edges.size() && budget.goesOn(); first += most) {
            const auto part = edges.subspan(first, std::min(most, edges.size() - first));
            painter->strokePath(moviePaths::way(part, pose.matrix, view).path, pen);
        }
        return;
    }
    // A wide line becomes an area, which can be filled in bands. Half of the time is for making it,
    // so that some of it is seen.
    const double reserved = budget.left() / 2;
    bool isWhole = true;
    const auto goesOn = [&] { return isWhole = budget.goesOn() && budget.left() > reserved; };
    const moviePaths::Path outline =
        moviePaths::lineOutline(painting.edges, pose.matrix, pen, view, goesOn);
    if (outline.usable) {
        fillPath(outline, pen.brush(), std::max(cost, costs.fill(outline, {}, false)));
    }
    if (!isWhole) budget.end();
}

void MoviePainter::drawText(const swf::Text& text, const Pose& pose) {
    swf::Fill fill;
    eachGlyph(text, pose, [&](const swf::Painting& painting, swf::Color color, const Pose& place) {
        fill.color = color;
        drawFill(painting, fill, place);
    });
}

void MoviePainter::eachGlyph(
    const swf::Text& text, const Pose& pose,
    const std::function<void(const swf::Painting&, swf::Color, const Pose&)>& use) {
    for (const swf::Glyph& glyph : text.glyphs) {
        if (!budget.take(DrawingCosts::glyph)) return;
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

void MoviePainter::collect(const swf::Instance& instance, const swf::Matrix& matrix, Mask& mask) {
    if (!matrix.usable() || !budget.take(DrawingCosts::instance)) return;
    if (const swf::DisplayList* inner = instance.inner()) {
        for (const auto& [depth, part] : *inner)
            collect(part, matrix.after(part.matrix), mask);
    } else if (const auto* shape = movie->find<swf::Shape>(instance.character)) {
        collect(*shape, matrix, mask);
    } else if (const auto* text = movie->find<swf::Text>(instance.character)) {
        eachGlyph(*text, {matrix, {}},
                  [&](const swf::Painting& painting, swf::Color, const Pose& place) {
                      addMask(pathOf(painting, place.matrix), mask);
                  });
    } else if (const auto* morph = movie->find<swf::MorphShape>(instance.character)) {
        if (!budget.take(DrawingCosts::morphing(morph->start))) return;
        const swf::Shape shape = morph->at(instance.ratio);
        for (const swf::Painting& painting : swf::paintings(shape)) {
            if (!painting.isLine) addMask(pathOf(painting, matrix), mask);
        }
    }
}

void MoviePainter::collect(const swf::Shape& shape, const swf::Matrix& matrix, Mask& mask) {
    const auto* ready = paintingsOf(shape);
    if (ready == nullptr) return;
    for (const swf::Painting& painting : *ready) {
        if (painting.isLine) continue;
        addMask(pathOf(painting, matrix), mask);
    }
}

void MoviePainter::addMask(const moviePaths::Path& part, Mask& mask) {
    if (!part.usable) return;
    mask.cost += costs.mask(part);
    // One alone may have holes; where there are more they add up.
    if (mask.outline.path.isEmpty()) {
        mask.outline = part;
        return;
    }
    mask.outline.path.setFillRule(Qt::WindingFill);
    mask.outline.path.addPath(part.path);
    mask.outline.bounds |= part.bounds;
    mask.outline.rise += part.rise;
}

const std::vector<swf::Painting>* MoviePainter::paintingsOf(const swf::Shape& shape) {
    const auto found = made.find(&shape);
    if (found != made.end()) return &found->second;
    const double cost = DrawingCosts::ordering(shape);
    if (!budget.has(cost)) {
        postponed = &shape;
        return nullptr;
    }
    if (!budget.take(cost)) return nullptr;
    progressed = true;
    return &made.emplace(&shape, swf::paintings(shape)).first->second;
}

moviePaths::Path MoviePainter::pathOf(const swf::Painting& painting, const swf::Matrix& matrix) {
    moviePaths::Path none;
    none.usable = false;
    if (!budget.take(DrawingCosts::path(painting.edges.size()))) return none;
    moviePaths::Path path = painting.isLine ? moviePaths::way(painting.edges, matrix, view)
                                            : moviePaths::outline(painting.edges, matrix, view);
    // It is there now, whatever it took.
    budget.add(DrawingCosts::segment * path.segments);
    return path;
}

#include "movies/qt/MoviePainter.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// The least cost that is worth a picture: what takes less is drawn anew each time.
constexpr double leastCost = DrawingBudget::whole / 8;

bool isInvisible(const swf::ColorTransform& colors) {
    return colors.multiply[3] <= 0 && colors.add[3] <= 0;
}

}  // namespace

MoviePainter::MoviePainter(std::shared_ptr<const swf::Movie> movie, std::function<double()> clock)
    : shapes(std::move(movie), canvas), clock(std::move(clock)) {}

MoviePainter::Outcome MoviePainter::draw(QPainter& target, const QRectF& surface,
                                         const swf::DisplayList& list, const swf::Matrix& matrix) {
    const QTransform toPixels = target.deviceTransform();
    const QRect pixels = toPixels.mapRect(surface).toAlignedRect();
    imageSize = pixels.size();
    imagePlace = toPixels.inverted().mapRect(QRectF(pixels));
    toImage = toPixels * QTransform::fromTranslate(-pixels.x(), -pixels.y());
    const moviePaths::View view{surface, std::sqrt(std::abs(toPixels.determinant()))};
    canvas = {&target, view, DrawingCosts(view), DrawingBudget(clock)};
    shapes.begin();
    target.save();
    target.setClipRect(surface, Qt::IntersectClip);
    target.setRenderHint(QPainter::Antialiasing);
    target.setPen(Qt::NoPen);
    const Pose pose{matrix, {}};
    drawList(list, drawStill(list, pose), pose);
    target.restore();
    lastCost = canvas.budget.taken();
    // Without progress another drawing would show no more. What stands still takes no time then.
    const bool goesOn = shapes.hasProgressed() || still.isNew() || mayAddStill();
    const bool isPartial = shapes.lacksPicture() || canvas.budget.exceeded();
    return {canvas.budget.taken(), canvas.budget.exceeded(),
            shapes.lacksShape() || (goesOn && isPartial)};
}

swf::DisplayList::const_iterator MoviePainter::drawStill(const swf::DisplayList& list,
                                                         const Pose& pose) {
    still.compare(list, pose.matrix, toImage, imageSize);
    auto next = std::next(list.begin(), static_cast<std::ptrdiff_t>(still.shown()));
    const double cost = canvas.costs.wholePicture();
    bool failed = false;
    if (mayAddStill()) {
        QPainter layer;
        beginImage(layer, still.image);
        QPainter* const below = std::exchange(canvas.painter, &layer);
        canvas.budget.reserve(cost);
        // The other half of the time is for what moves.
        for (; !failed && still.hasMore() && canvas.budget.left() > DrawingBudget::whole / 2;
             ++next) {
            const swf::Instance& instance = next->second;
            drawInstance(instance, {pose.matrix.after(instance.matrix), instance.colors});
            failed = canvas.budget.exceeded() || shapes.lacksPicture() || shapes.lacksShape();
            if (!failed) still.add();
        }
        canvas.budget.release(cost);
        canvas.painter = below;
    }
    if (!still.image.isNull()) {
        canvas.budget.add(cost);
        canvas.painter->drawImage(imagePlace, still.image);
    }
    // Part of a thing is there, which can be neither left out nor drawn again.
    if (failed && canvas.budget.exceeded()) {
        still.giveUp();
    } else if (failed) {
        still.drop();
    }
    return next;
}

bool MoviePainter::mayAddStill() const {
    const double cost = canvas.costs.wholePicture();
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
        if (!canvas.budget.take(DrawingCosts::instance)) break;
        const Pose inner{pose.matrix.after(instance.matrix), pose.colors.after(instance.colors)};
        if (instance.clipDepth == 0) {
            drawInstance(instance, inner);
            continue;
        }
        Mask mask;
        collect(instance, inner.matrix, mask);
        const bool isLarge = mask.cost > DrawingCosts::atOnce;
        if (!canvas.budget.take(isLarge ? canvas.costs.layer() : mask.cost)) break;
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
        canvas.painter->save();
        canvas.painter->setClipPath(mask.outline.path, Qt::IntersectClip);
        return nullptr;
    }
    canvas.budget.reserve(canvas.costs.layer());
    auto layer = std::make_unique<Layer>();
    layer->below = canvas.painter;
    // The mask comes before what it bounds, so that the first things are seen when the time ends
    // among them.
    QPainter maskPainter;
    beginImage(maskPainter, layer->mask);
    canvas.painter = &maskPainter;
    shapes.fillPath(mask.outline, Qt::black, mask.cost);
    beginImage(layer->painter, layer->image);
    canvas.painter = &layer->painter;
    return layer;
}

void MoviePainter::endMask(std::unique_ptr<Layer> layer) {
    if (!layer) {
        canvas.painter->restore();
        return;
    }
    canvas.painter->resetTransform();
    canvas.painter->setCompositionMode(QPainter::CompositionMode_DestinationIn);
    canvas.painter->drawImage(0, 0, layer->mask);
    canvas.painter->end();
    canvas.painter = layer->below;
    canvas.painter->drawImage(imagePlace, layer->image);
    canvas.budget.release(canvas.costs.layer());
}

void MoviePainter::drawInstance(const swf::Instance& instance, const Pose& pose) {
    if (!pose.matrix.usable() || isInvisible(pose.colors)) return;
    if (const swf::DisplayList* inner = instance.inner()) {
        drawList(*inner, inner->begin(), pose);
    } else {
        shapes.draw(instance, pose);
    }
}

void MoviePainter::collect(const swf::Instance& instance, const swf::Matrix& matrix, Mask& mask) {
    if (!matrix.usable() || !canvas.budget.take(DrawingCosts::instance)) return;
    if (const swf::DisplayList* inner = instance.inner()) {
        for (const auto& [depth, part] : *inner)
            collect(part, matrix.after(part.matrix), mask);
    } else {
        shapes.eachArea(instance, matrix,
                        [&](const moviePaths::Path& part) { addMask(part, mask); });
    }
}

void MoviePainter::addMask(const moviePaths::Path& part, Mask& mask) const {
    if (!part.usable) return;
    mask.cost += canvas.costs.mask(part);
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

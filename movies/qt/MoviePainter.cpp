#include "movies/qt/MoviePainter.h"

#include "movies/qt/MovieBrushes.h"

#include <algorithm>
#include <cmath>

namespace {

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

MoviePainter::MoviePainter(std::shared_ptr<const swf::Movie> movie)
    : movie(movie), pictures(std::move(movie)) {}

MoviePainter::Outcome MoviePainter::draw(QPainter& target, const QRectF& surface,
                                         const swf::DisplayList& list, const swf::Matrix& matrix) {
    painter = &target;
    visible = surface;
    pixelsPerUnit = std::sqrt(std::abs(target.deviceTransform().determinant()));
    costs = DrawingCosts(visible, pixelsPerUnit);
    budget = {};
    mayUnpack = true;
    unfinished = false;
    progressed = false;
    target.save();
    target.setClipRect(surface, Qt::IntersectClip);
    target.setRenderHint(QPainter::Antialiasing);
    target.setPen(Qt::NoPen);
    drawList(list, {matrix, {}});
    target.restore();
    // Without progress another drawing would show no more.
    return {budget.taken(), budget.exceeded(), unfinished && progressed};
}

void MoviePainter::drawList(const swf::DisplayList& list, const Pose& pose) {
    std::vector<std::uint16_t> masks;
    for (const auto& [depth, instance] : list) {
        for (; !masks.empty() && depth > masks.back(); masks.pop_back())
            painter->restore();
        if (!budget.take(DrawingCosts::instance)) break;
        const Pose inner{pose.matrix.after(instance.matrix), pose.colors.after(instance.colors)};
        if (instance.clipDepth == 0) {
            drawInstance(instance, inner);
            continue;
        }
        QPainterPath mask;
        collect(instance, inner.matrix, mask);
        if (!budget.take(costs.mask(mask.boundingRect()))) break;
        painter->save();
        painter->setClipPath(mask, Qt::IntersectClip);
        masks.push_back(instance.clipDepth);
    }
    for (; !masks.empty(); masks.pop_back())
        painter->restore();
}

void MoviePainter::drawInstance(const swf::Instance& instance, const Pose& pose) {
    if (!pose.matrix.usable() || isInvisible(pose.colors)) return;
    if (const swf::DisplayList* inner = instance.inner()) {
        drawList(*inner, pose);
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
        const moviePaths::Path path = pathOf(painting, pose.matrix);
        if (budget.exceeded()) return;
        if (!path.usable) continue;
        if (painting.isLine) {
            drawLine(path, shape.lines[painting.style], pose);
        } else {
            drawFill(path, shape.fills[painting.style], pose);
        }
    }
}

void MoviePainter::drawFill(const moviePaths::Path& path, const swf::Fill& fill, const Pose& pose) {
    if (!path.bounds.intersects(visible)) return;
    if (fill.kind == swf::Fill::Kind::Bitmap) {
        drawPicture(path, fill, pose);
        return;
    }
    if (!budget.take(costs.fill(path, fill.kind != swf::Fill::Kind::Solid))) return;
    painter->fillPath(path.path, movieBrushes::brush(fill, pose.matrix, pose.colors));
}

void MoviePainter::drawPicture(const moviePaths::Path& path, const swf::Fill& fill,
                               const Pose& pose) {
    const swf::Matrix place = pose.matrix.after(fill.matrix);
    if (!place.usable()) return;
    if (!budget.take(costs.picture(path))) return;
    // One picture a drawing is unpacked, since that takes as long as all the rest.
    const bool packed = pictures.isPacked(fill.bitmap);
    unfinished = unfinished || (packed && !mayUnpack);
    QImage image = pictures.find(fill.bitmap, mayUnpack);
    if (packed && mayUnpack) {
        mayUnpack = false;
        progressed = true;
    }
    if (image.isNull()) return;
    painter->save();
    if (onlyFades(pose.colors)) {
        painter->setOpacity(pose.colors.multiply[3] / 256.0);
    } else {
        const double size = double{1} * image.width() * image.height();
        if (budget.take(DrawingCosts::recoloring(size)))
            image = movieBrushes::recolored(image, pose.colors);
    }
    painter->setRenderHint(QPainter::SmoothPixmapTransform, fill.smooth);
    if (fill.repeated) {
        QBrush brush(image);
        brush.setTransform(moviePaths::toQt(place));
        painter->fillPath(path.path, brush);
    } else {
        painter->setClipPath(path.path, Qt::IntersectClip);
        painter->setTransform(moviePaths::toQt(place), true);
        painter->drawImage(0, 0, image);
    }
    painter->restore();
}

void MoviePainter::drawLine(const moviePaths::Path& path, const swf::Line& line, const Pose& pose) {
    QPen pen = movieBrushes::pen(line, pose.matrix, 1 / pixelsPerUnit);
    const double margin = pen.widthF();
    const QRectF bounds = path.bounds.adjusted(-margin, -margin, margin, margin);
    if (!bounds.intersects(visible)) return;
    if (!budget.take(costs.line(path, margin))) return;
    if (line.fill && line.fill->kind != swf::Fill::Kind::Bitmap) {
        pen.setBrush(movieBrushes::brush(*line.fill, pose.matrix, pose.colors));
    } else {
        pen.setColor(movieBrushes::color(pose.colors.apply(line.color)));
    }
    painter->strokePath(path.path, pen);
}

void MoviePainter::drawText(const swf::Text& text, const Pose& pose) {
    swf::Fill fill;
    for (const swf::Glyph& glyph : text.glyphs) {
        if (!budget.take(DrawingCosts::glyph)) return;
        const auto* font = movie->find<swf::Font>(glyph.font);
        if (font == nullptr || glyph.index >= font->glyphs.size()) continue;
        const auto* ready = paintingsOf(font->glyphs[glyph.index]);
        if (ready == nullptr) return;
        const double scale = glyph.height / font->em;
        const swf::Matrix inText{scale, 0, 0, scale, glyph.place.x, glyph.place.y};
        const Pose place{pose.matrix.after(text.matrix).after(inText), pose.colors};
        fill.color = glyph.color;
        for (const swf::Painting& painting : *ready) {
            const moviePaths::Path path = pathOf(painting, place.matrix);
            if (budget.exceeded()) return;
            if (path.usable) drawFill(path, fill, place);
        }
    }
}

void MoviePainter::collect(const swf::Instance& instance, const swf::Matrix& matrix,
                           QPainterPath& path) {
    if (!matrix.usable() || !budget.take(DrawingCosts::instance)) return;
    if (const swf::DisplayList* inner = instance.inner()) {
        for (const auto& [depth, part] : *inner)
            collect(part, matrix.after(part.matrix), path);
    } else if (const auto* shape = movie->find<swf::Shape>(instance.character)) {
        collect(*shape, matrix, path);
    } else if (const auto* morph = movie->find<swf::MorphShape>(instance.character)) {
        if (!budget.take(DrawingCosts::morphing(morph->start))) return;
        const swf::Shape shape = morph->at(instance.ratio);
        for (const swf::Painting& painting : swf::paintings(shape)) {
            if (!painting.isLine) addMask(pathOf(painting, matrix), path);
        }
    }
}

void MoviePainter::collect(const swf::Shape& shape, const swf::Matrix& matrix, QPainterPath& path) {
    const auto* ready = paintingsOf(shape);
    if (ready == nullptr) return;
    for (const swf::Painting& painting : *ready) {
        if (painting.isLine) continue;
        addMask(pathOf(painting, matrix), path);
    }
}

void MoviePainter::addMask(const moviePaths::Path& part, QPainterPath& mask) {
    if (!part.usable || !budget.take(costs.maskPart(part))) return;
    // One alone may have holes; where there are more they add up.
    if (mask.isEmpty()) {
        mask = part.path;
        return;
    }
    mask.setFillRule(Qt::WindingFill);
    mask.addPath(part.path);
}

const std::vector<swf::Painting>* MoviePainter::paintingsOf(const swf::Shape& shape) {
    const auto found = made.find(&shape);
    if (found != made.end()) return &found->second;
    const double cost = DrawingCosts::ordering(shape);
    if (!budget.has(cost)) {
        unfinished = true;
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
    return moviePaths::make(painting.edges, matrix, visible.width() + visible.height());
}

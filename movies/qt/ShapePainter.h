#pragma once

#include "movies/player/Instance.h"
#include "movies/player/Movie.h"
#include "movies/player/contours.h"
#include "movies/qt/DrawingBudget.h"
#include "movies/qt/MoviePaths.h"
#include "movies/qt/MoviePictures.h"

#include <QPainter>

#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

/// Where the drawing that is under way goes, what that costs, and what it may still take.
struct Canvas {
    QPainter* painter = nullptr;
    moviePaths::View view;
    DrawingCosts costs;
    DrawingBudget budget;
};

/// Paints single shapes and texts of a movie, as the outlines that they are, at the surface's own
/// resolution. What a drawing has no time to make ready is left out, and made ready for a later
/// one.
class ShapePainter {
public:
    /// Where something is drawn, and what its colours go through.
    struct Pose {
        swf::Matrix matrix;
        swf::ColorTransform colors;
    };

    /// Paints onto `canvas`, whose owner sets it anew for each drawing.
    ShapePainter(std::shared_ptr<const swf::Movie> movie, Canvas& canvas);

    /// Call it when a drawing has begun.
    void begin();
    /// Draws a shape, a morph or a text. Other characters have no look of their own.
    void draw(const swf::Instance& instance, const Pose& pose);
    /// Hands out the areas that an instance covers, as far as the budget goes.
    void eachArea(const swf::Instance& instance, const swf::Matrix& matrix,
                  const std::function<void(const moviePaths::Path&)>& use);
    /// Fills a path, from top to bottom, as far as the time goes.
    void fillPath(const moviePaths::Path& path, const QBrush& brush, double cost);

    /// Whether a picture was left out that is still packed.
    [[nodiscard]] bool lacksPicture() const { return isPictureMissing; }
    /// Whether a shape was left out, with which the next drawing begins.
    [[nodiscard]] bool lacksShape() const { return postponed != nullptr; }
    /// Whether something was made ready, here or by the thread that unpacks: that takes no time in
    /// the next drawing, which shows more.
    [[nodiscard]] bool hasProgressed() const { return progressed || pictures.isBusy(); }

private:
    void drawPaintings(const std::vector<swf::Painting>& paintings, const swf::Shape& shape,
                       const Pose& pose);
    void drawFill(const swf::Painting& painting, const swf::Fill& fill, const Pose& pose);
    void drawPicture(const moviePaths::Path& path, const swf::Fill& fill, const Pose& pose);
    /// A brush that paints the picture of a fill over `area`. Nothing while there is no picture.
    [[nodiscard]] std::optional<QBrush> pictureBrush(const QRectF& area, const swf::Fill& fill,
                                                     const Pose& pose);
    /// Makes of a picture what `area` shows of it when its edges go on without an end. Returns
    /// where that has its place; nothing when it costs too much.
    [[nodiscard]] std::optional<QTransform> extend(QImage& image, QTransform place,
                                                   const QRectF& area, bool smooth);
    void drawLine(const swf::Painting& painting, const swf::Line& line, const Pose& pose);
    /// Hands out the outlines of a text's glyphs, their colours and their places, as far as the
    /// budget goes.
    void eachGlyph(const swf::Text& text, const Pose& pose,
                   const std::function<void(const swf::Painting&, swf::Color, const Pose&)>& use);
    /// The shape of a morph at a ratio; nothing when that does not fit any more.
    [[nodiscard]] std::optional<swf::Shape> morphed(const swf::MorphShape& morph,
                                                    std::uint16_t ratio);
    /// The shape's paintings, made when they are first needed; nothing while that costs too much.
    const std::vector<swf::Painting>* paintingsOf(const swf::Shape& shape);
    [[nodiscard]] moviePaths::Path pathOf(const swf::Painting& painting, const swf::Matrix& matrix);

    std::shared_ptr<const swf::Movie> movie;
    Canvas& canvas;
    MoviePictures pictures;
    std::unordered_map<const swf::Shape*, std::vector<swf::Painting>> made;
    /// What there was no time to make ready; the next drawing begins with it.
    const swf::Shape* postponed = nullptr;

    // These are about the drawing that is under way.
    bool mayUnpack = true;
    bool isPictureMissing = false;
    bool progressed = false;
};

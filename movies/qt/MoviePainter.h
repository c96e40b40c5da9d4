#pragma once

#include "movies/player/Instance.h"
#include "movies/player/Movie.h"
#include "movies/player/contours.h"
#include "movies/qt/DrawingBudget.h"
#include "movies/qt/MoviePaths.h"
#include "movies/qt/MoviePictures.h"
#include "movies/qt/StillLayer.h"

#include <QPainter>

#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

/// Draws what stands on the stage of a movie. Shapes, lines and glyphs are drawn as the outlines
/// that they are, at the surface's own resolution.
class MoviePainter {
public:
    /// Nothing is made ready before it is first drawn.
    /// The time that drawings take is taken from `clock`, in nanoseconds.
    explicit MoviePainter(std::shared_ptr<const swf::Movie> movie,
                          std::function<double()> clock = DrawingBudget::processorTime);

    /// What one drawing came to.
    struct Outcome {
        /// What it was counted to take, about in nanoseconds.
        double cost = 0;
        /// The movie asks for more than a drawing may take; the rest was left out.
        bool cut = false;
        /// Something could not yet be made ready; the next drawing shows more.
        bool unfinished = false;
    };
    /// Draws onto `surface`, a part of what `target` is for; `matrix` leads from the movie to it.
    Outcome draw(QPainter& target, const QRectF& surface, const swf::DisplayList& list,
                 const swf::Matrix& matrix);

private:
    /// Where something is drawn, and what its colours go through.
    struct Pose {
        swf::Matrix matrix;
        swf::ColorTransform colors;
    };
    /// What bounds others, as far as it is collected.
    struct Mask {
        moviePaths::Path outline;
        double cost = 0;
    };
    /// What is bounded by something that takes long to draw is drawn apart.
    struct Layer {
        /// What of the image is seen, by its alpha.
        QImage mask;
        QImage image;
        QPainter painter;
        QPainter* below = nullptr;
    };
    /// Draws what stands still at the back, as far as it is known to. Returns what comes next.
    swf::DisplayList::const_iterator drawStill(const swf::DisplayList& list, const Pose& pose);
    /// Whether there is more of that, and enough to be worth it.
    [[nodiscard]] bool mayAddStill() const;
    void drawList(const swf::DisplayList& list, swf::DisplayList::const_iterator first,
                  const Pose& pose);
    /// Begins to paint on a picture of all that is seen, which is made when it is not there yet.
    void beginImage(QPainter& on, QImage& image) const;
    /// What is drawn from now on is bounded, until `endMask` is called with what this returns.
    [[nodiscard]] std::unique_ptr<Layer> beginMask(const Mask& mask);
    void endMask(std::unique_ptr<Layer> layer);
    void drawInstance(const swf::Instance& instance, const Pose& pose);
    void drawShape(const std::vector<swf::Painting>& paintings, const swf::Shape& shape,
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
    void drawText(const swf::Text& text, const Pose& pose);
    /// Hands out the outlines of a text's glyphs, their colours and their places, as far as the
    /// budget goes.
    void eachGlyph(const swf::Text& text, const Pose& pose,
                   const std::function<void(const swf::Painting&, swf::Color, const Pose&)>& use);
    void collect(const swf::Instance& instance, const swf::Matrix& matrix, Mask& mask);
    void collect(const swf::Shape& shape, const swf::Matrix& matrix, Mask& mask);
    /// The shape's paintings, made when they are first needed; nothing while that costs too much.
    const std::vector<swf::Painting>* paintingsOf(const swf::Shape& shape);
    [[nodiscard]] moviePaths::Path pathOf(const swf::Painting& painting, const swf::Matrix& matrix);
    /// Fills a path, from top to bottom, as far as the time goes.
    void fillPath(const moviePaths::Path& path, const QBrush& brush, double cost);
    /// Adds a part to what bounds others.
    void addMask(const moviePaths::Path& part, Mask& mask);

    std::shared_ptr<const swf::Movie> movie;
    MoviePictures pictures;
    std::function<double()> clock;
    std::unordered_map<const swf::Shape*, std::vector<swf::Painting>> made;
    StillLayer still;
    /// What the drawing before was counted to take.
    double lastCost = 0;
    /// What there was no time to make ready; the next drawing begins with it.
    const swf::Shape* postponed = nullptr;

    // Of the drawing that is under way.
    QPainter* painter = nullptr;
    moviePaths::View view;
    /// Of a picture of all that is seen: its size, its place in the units of the drawing, and what
    /// brings these to its pixels.
    QSize imageSize;
    QRectF imagePlace;
    QTransform toImage;
    DrawingCosts costs;
    DrawingBudget budget;
    bool mayUnpack = true;
    bool unfinished = false;
    /// Whether something was made ready.
    bool progressed = false;
};

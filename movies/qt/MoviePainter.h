#pragma once

#include "movies/player/Instance.h"
#include "movies/player/Movie.h"
#include "movies/qt/ShapePainter.h"
#include "movies/qt/StillLayer.h"

#include <QPainter>

#include <functional>
#include <memory>

/// Draws what stands on the stage of a movie, from back to front: what stands still at the back as
/// one picture, the rest one by one, and what is bounded by something within that.
class MoviePainter {
public:
    /// Nothing is made ready before it is first drawn.
    /// The time that drawings take is taken from `clock`, in nanoseconds.
    explicit MoviePainter(std::shared_ptr<const swf::Movie> movie,
                          std::function<double()> clock = DrawingBudget::processorTime);
    MoviePainter(const MoviePainter&) = delete;
    MoviePainter& operator=(const MoviePainter&) = delete;
    ~MoviePainter() = default;

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
    using Pose = ShapePainter::Pose;
    /// What bounds others, as far as it is collected.
    struct Mask {
        moviePaths::Path outline;
        double cost = 0;
    };
    /// What is bounded by something that takes long to draw is drawn apart.
    struct Layer {
        /// Its alpha says what of the image is seen.
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
    void drawInstance(const swf::Instance& instance, const Pose& pose);
    /// Begins to paint on a picture of all that is seen, which is made when it is not there yet.
    void beginImage(QPainter& on, QImage& image) const;
    /// What is drawn from now on is bounded, until `endMask` is called with what this returns.
    [[nodiscard]] std::unique_ptr<Layer> beginMask(const Mask& mask);
    void endMask(std::unique_ptr<Layer> layer);
    void collect(const swf::Instance& instance, const swf::Matrix& matrix, Mask& mask);
    /// Adds a part to what bounds others.
    void addMask(const moviePaths::Path& part, Mask& mask) const;

    Canvas canvas;
    ShapePainter shapes;
    std::function<double()> clock;
    StillLayer still;
    /// What the drawing before was counted to take.
    double lastCost = 0;
    /// The size of a picture of all that is seen, its place in the units of the drawing, and what
    /// brings these to its pixels.
    QSize imageSize;
    QRectF imagePlace;
    QTransform toImage;
};

#pragma once

#include "movies/player/Instance.h"
#include "movies/player/Movie.h"
#include "movies/player/contours.h"
#include "movies/qt/DrawingBudget.h"
#include "movies/qt/MoviePaths.h"
#include "movies/qt/MoviePictures.h"

#include <QPainter>

#include <memory>
#include <unordered_map>
#include <vector>

/// Draws what stands on the stage of a movie. Shapes, lines and glyphs are drawn as the outlines
/// that they are, at the surface's own resolution.
class MoviePainter {
public:
    /// Nothing is made ready before it is first drawn.
    explicit MoviePainter(std::shared_ptr<const swf::Movie> movie);

    /// What one drawing came to.
    struct Outcome {
        /// What was counted, about in nanoseconds.
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
    void drawList(const swf::DisplayList& list, const Pose& pose);
    void drawInstance(const swf::Instance& instance, const Pose& pose);
    void drawShape(const std::vector<swf::Painting>& paintings, const swf::Shape& shape,
                   const Pose& pose);
    void drawFill(const moviePaths::Path& path, const swf::Fill& fill, const Pose& pose);
    void drawPicture(const moviePaths::Path& path, const swf::Fill& fill, const Pose& pose);
    void drawLine(const moviePaths::Path& path, const swf::Line& line, const Pose& pose);
    void drawText(const swf::Text& text, const Pose& pose);
    void collect(const swf::Instance& instance, const swf::Matrix& matrix, QPainterPath& path);
    void collect(const swf::Shape& shape, const swf::Matrix& matrix, QPainterPath& path);
    /// The shape's paintings, made when they are first needed; nothing while that costs too much.
    const std::vector<swf::Painting>* paintingsOf(const swf::Shape& shape);
    [[nodiscard]] moviePaths::Path pathOf(const swf::Painting& painting, const swf::Matrix& matrix);
    /// Adds a part to what bounds others.
    void addMask(const moviePaths::Path& part, QPainterPath& mask);

    std::shared_ptr<const swf::Movie> movie;
    MoviePictures pictures;
    std::unordered_map<const swf::Shape*, std::vector<swf::Painting>> made;

    // Of the drawing that is under way.
    QPainter* painter = nullptr;
    QRectF visible;
    double pixelsPerUnit = 1;
    DrawingCosts costs;
    DrawingBudget budget;
    bool mayUnpack = true;
    bool unfinished = false;
    /// Whether something was made ready.
    bool progressed = false;
};

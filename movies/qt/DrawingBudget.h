#pragma once

#include "movies/player/Shape.h"
#include "movies/qt/MoviePaths.h"

#include <QRectF>

#include <functional>

/// What may go into one drawing of a movie, so that no movie holds the program up: processor time.
/// The time that was used is measured between things; whether the next one still fits is counted,
/// since a single one may take longer than all that there is. The unit is a nanosecond.
class DrawingBudget {
public:
    static constexpr double whole = 8e6;

    /// The processor time that the program has used: Qt fills large areas in threads of its own,
    /// and the one that draws waits for them.
    [[nodiscard]] static double processorTime();

    /// The time begins now, and is read from `clock`. Without a clock the counts alone decide, so
    /// that the same things fit on every machine.
    explicit DrawingBudget(std::function<double()> clock = processorTime);

    /// Takes the cost of a thing before it is drawn. False when it does not fit any more; from then
    /// on nothing fits.
    [[nodiscard]] bool take(double cost);
    /// Takes the cost of what was done already.
    void add(double cost);
    /// Keeps time for what has to be done even when all else is over; `release` ends that.
    void reserve(double cost) { reserved += cost; }
    void release(double cost) { reserved -= cost; }
    /// Whether that much is left.
    [[nodiscard]] bool has(double cost) { return cost <= left(); }
    /// How much is left.
    [[nodiscard]] double left();
    /// All that was taken, as it was counted.
    [[nodiscard]] double taken() const { return counted; }
    /// Looks at the time between the parts of one thing. False when it is over.
    [[nodiscard]] bool goesOn();
    /// From now on nothing fits.
    void end() { over = true; }
    /// Whether more was asked for than there is.
    [[nodiscard]] bool exceeded() const { return over; }

private:
    void measure();

    std::function<double()> clock;
    double begin = 0;
    double measured = 0;
    /// What was counted since it was last measured.
    double pending = 0;
    double counted = 0;
    double reserved = 0;
    bool over = false;
};

/// How a picture gets onto the surface, from the cheapest way on.
enum class PictureScaling {
    None,    ///< its pixels are those of the surface
    Rough,   ///< the nearest pixel
    Smooth,  ///< mixed from the pixels around
};

/// What drawing takes, in the unit of the budget, for things of any size and on a surface of which
/// only a part is seen. bench/movies shows them beside real times.
class DrawingCosts {
public:
    /// Looking at one thing on the stage, besides drawing it.
    static constexpr double instance = 60;
    /// Looking at one glyph of a text, besides drawing it.
    static constexpr double glyph = 100;
    /// Unpacking a small picture.
    static constexpr double unpacking = 2e6;
    /// One line of a path that is being made.
    static constexpr double segment = 15;
    /// What takes longer is drawn in parts, so that the time can be looked at between them.
    static constexpr double atOnce = 2e6;

    DrawingCosts() = default;
    /// `view` is the surface that the paths are on.
    explicit DrawingCosts(const moviePaths::View& view) : view(view) {}

    /// Putting a shape's edges in the order in which they are drawn.
    [[nodiscard]] static double ordering(const swf::Shape& shape);
    /// Making a shape out of two that are like this one.
    [[nodiscard]] static double morphing(const swf::Shape& shape);
    /// Making a path of so many edges.
    [[nodiscard]] static double path(std::size_t edges);
    /// Making the colours of a gradient; 0 for other fills.
    [[nodiscard]] static double gradient(const swf::Fill& fill);
    /// Changing the colours of a picture, making one of half the size, or one with its edges
    /// extended.
    [[nodiscard]] static double recoloring(double pixels);
    [[nodiscard]] static double halving(double pixels);
    [[nodiscard]] static double extending(double pixels);

    /// Filling a path.
    [[nodiscard]] double fill(const moviePaths::Path& path, const swf::Fill& fill,
                              bool isOpaque) const;
    /// Filling a path with a picture.
    [[nodiscard]] double picture(const moviePaths::Path& path, PictureScaling scaling,
                                 bool hasAlpha) const;
    /// Whether a line has at most the width of a pixel: Qt draws it without an outline.
    [[nodiscard]] static bool isThin(double width, const moviePaths::View& view) {
        return width * view.pixelsPerUnit <= 1;
    }
    /// Drawing a path as a line of a width.
    [[nodiscard]] double line(const moviePaths::Path& path, double width) const;
    /// The number of bands that an area is filled in, so that the time can be looked at between
    /// them: where many steep edges lie beside each other, it takes up to a hundred times what is
    /// counted.
    [[nodiscard]] int bands(const moviePaths::Path& path, double counted) const;
    /// Beginning to draw things apart from the others; bringing them onto those takes the same
    /// again.
    [[nodiscard]] double layer() const;
    /// Bringing a picture of all that is seen onto what is there.
    [[nodiscard]] double wholePicture() const;
    /// Bounding others by a path of which this is a part.
    [[nodiscard]] double mask(const moviePaths::Path& path) const;

private:
    /// The part for the outline itself, whatever it is filled with.
    [[nodiscard]] double outline(const moviePaths::Path& path) const;
    /// How many pixels are covered, at most those of the bounds that are seen.
    [[nodiscard]] double covered(const moviePaths::Path& path) const;
    /// What is seen of a part of the surface, in its pixels.
    [[nodiscard]] QRectF inPixels(const QRectF& bounds) const;

    moviePaths::View view;
};

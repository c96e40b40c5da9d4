#pragma once

#include "movies/player/Instance.h"

#include <QImage>
#include <QTransform>

#include <vector>

/// The things at the back of a movie that stand still, as one picture, so that they are drawn once
/// and not for each frame. It ends before the first sprite, button or mask.
class StillLayer {
public:
    /// Compares what is to be drawn, and where, with the drawing before. What the picture shows
    /// stays as long as none of it has changed.
    void compare(const swf::DisplayList& list, const swf::Matrix& toSurface,
                 const QTransform& surfaceToPixels, QSize surfaceSize);

    /// Whether only the next drawing shows what stands still.
    [[nodiscard]] bool isNew() const { return moved || equal == 1; }
    /// How many things of the list the picture shows.
    [[nodiscard]] std::size_t shown() const { return count; }
    /// Whether the next thing has not changed since the drawing before, and may be added.
    [[nodiscard]] bool hasMore() const { return count < same && count < most; }
    /// The next thing is in the picture.
    void add() { ++count; }
    /// The next thing is there in part, so the picture is of no use.
    void drop();
    /// Drops the picture, and does not add that thing another time.
    void giveUp();

    /// The picture, which can be painted on once it has its size.
    QImage image;

private:
    /// All that the look of a thing depends on.
    struct Thing {
        swf::InstanceNumber number = 0;
        swf::Matrix matrix;
        swf::ColorTransform colors;
        std::uint16_t ratio = 0;
        bool operator==(const Thing&) const = default;
    };

    std::vector<Thing> before;
    swf::Matrix matrix;
    QTransform toPixels;
    QSize size;
    bool moved = true;
    /// How many drawings were like the one before them. A single one proves nothing: between two
    /// frames a movie may be drawn again because something lay over it.
    int equal = 0;
    std::size_t same = 0;
    std::size_t count = 0;
    /// The number of things behind which one could not be added.
    std::size_t most = 0;
};

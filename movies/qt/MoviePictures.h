#pragma once

#include "movies/player/Movie.h"

#include <QImage>

#include <cstdint>
#include <memory>
#include <unordered_map>

/// The pictures of a movie, unpacked when they are first drawn; their size is looked at before.
class MoviePictures {
public:
    /// Nothing is unpacked yet.
    explicit MoviePictures(std::shared_ptr<const swf::Movie> movie) : movie(std::move(movie)) {}

    /// A null image for one that is not there, cannot be read, is too large, or has not been
    /// unpacked and is not to be, since `mayUnpack` is false.
    [[nodiscard]] QImage find(std::uint16_t number, bool mayUnpack);
    /// Whether `find` would have to unpack something.
    [[nodiscard]] bool isPacked(std::uint16_t number) const;

private:
    [[nodiscard]] QImage unpack(const swf::Bitmap& bitmap) const;

    std::shared_ptr<const swf::Movie> movie;
    std::unordered_map<std::uint16_t, QImage> unpacked;
    std::size_t pixels = 0;
};

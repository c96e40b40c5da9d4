#pragma once

#include "movies/player/Movie.h"

#include <QImage>

#include <cstdint>
#include <future>
#include <memory>
#include <optional>
#include <unordered_map>

/// A picture that can be drawn, and the size that it has in the file: it may be scaled down.
struct MoviePicture {
    QImage image;
    QSize size;
};

/// The pictures of a movie, unpacked when they are first drawn: small ones at once, others by a
/// thread that does nothing else, one after another.
class MoviePictures {
public:
    /// Nothing is unpacked yet.
    explicit MoviePictures(std::shared_ptr<const swf::Movie> movie) : movie(std::move(movie)) {}

    /// The picture; it has a null image when it is not there, cannot be read, is too large, or has
    /// not been unpacked. Small ones are unpacked only when `mayUnpack`.
    [[nodiscard]] MoviePicture find(std::uint16_t number, bool mayUnpack);
    /// Whether the picture is there and has not been unpacked.
    [[nodiscard]] bool isPacked(std::uint16_t number) const;
    /// Takes what the thread has made.
    void takeResult();
    /// Whether a picture is being unpacked, or was and has not been taken.
    [[nodiscard]] bool isBusy() const { return current.has_value(); }

private:
    /// A picture that the thread is at work on.
    struct Work {
        std::uint16_t number = 0;
        std::future<MoviePicture> result;
    };
    void begin(std::uint16_t number, const swf::Bitmap& bitmap);
    MoviePicture keep(std::uint16_t number, MoviePicture picture);

    std::shared_ptr<const swf::Movie> movie;
    std::unordered_map<std::uint16_t, MoviePicture> unpacked;
    std::optional<Work> current;
    std::size_t pixels = 0;
};

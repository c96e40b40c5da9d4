#pragma once

#include "movies/player/MovieLoader.h"
#include "movies/player/Player.h"
#include "movies/qt/MoviePainter.h"

#include <QColor>
#include <QImage>

#include <functional>
#include <memory>
#include <string>

/// A movie that is played, and drawn onto a picture on a black ground.
class Screening {
public:
    /// Without a clock drawings are the same however busy the machine is.
    explicit Screening(std::string file, std::function<double()> clock = {})
        : movie(swf::readMovie(std::move(file))), player(movie), painter(movie, std::move(clock)) {}

    void advance(int frames = 1) {
        for (; frames > 0; --frames)
            player.advance();
    }
    /// The picture, `scale` times as large as the movie.
    QImage picture(double scale = 1) {
        QImage image = ground(scale);
        draw(image, scale);
        return image;
    }
    /// What drawing such a picture takes, by a clock. Where it is moved nothing is left of the
    /// drawing before.
    template <typename Clock>
    double drawingTime(double scale, Clock clock, double moved = 0) {
        QImage image = ground(scale);
        const auto begin = clock();
        draw(image, scale, moved);
        return clock() - begin;
    }
    /// The colour in the middle of a pixel of the movie.
    QRgb at(int x, int y) { return picture().pixel(x, y) & 0xFFFFFFU; }
    [[nodiscard]] std::string commands() {
        std::string all;
        for (const swf::Command& command : player.takeCommands())
            all += command.name + ";";
        return all;
    }

    [[nodiscard]] QImage ground(double scale) const {
        const double factor = scale / swf::twipsPerPixel;
        const swf::Rect& frame = movie->frame;
        QImage image(std::max(1, static_cast<int>(frame.width() * factor)),
                     std::max(1, static_cast<int>(frame.height() * factor)), QImage::Format_RGB32);
        image.fill(Qt::black);
        return image;
    }
    void draw(QImage& image, double scale, double moved = 0) {
        const double factor = scale / swf::twipsPerPixel;
        const swf::Rect& frame = movie->frame;
        QPainter target(&image);
        outcome =
            painter.draw(target, image.rect(), player.stage(),
                         {factor, 0, 0, factor, moved - frame.left * factor, -frame.top * factor});
    }

    std::shared_ptr<const swf::Movie> movie;
    swf::Player player;
    MoviePainter painter;
    MoviePainter::Outcome outcome;
};

constexpr QRgb black = 0;
constexpr QRgb red = 0xFF0000;
constexpr QRgb green = 0x00FF00;
constexpr QRgb blue = 0x0000FF;
constexpr QRgb white = 0xFFFFFF;

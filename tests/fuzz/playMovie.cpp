#include "tests/fuzz/playMovie.h"

#include "movies/player/MovieLoader.h"
#include "movies/player/Player.h"
#include "movies/qt/MoviePainter.h"

#include <QImage>
#include <QThreadPool>

void playMovie(std::string_view file) {
    const auto movie = swf::readMovie(std::string(file));
    swf::Player player(movie);
    MoviePainter painter(movie);
    QImage image(64, 64, QImage::Format_ARGB32_Premultiplied);
    QPainter target(&image);
    for (unsigned frame = 0; frame < 12; ++frame) {
        player.advance();
        player.mouse({frame * 300.0, frame * 60.0}, frame % 3 == 1);
        static_cast<void>(player.key(frame % 2 == 0 ? 13 : 32));
        static_cast<void>(player.takeCommands());
        painter.draw(target, {0, 0, 64, 64}, player.stage(), {0.02, 0, 0, 0.02, 0, 0});
        // So that the next frame has the picture that is being unpacked.
        QThreadPool::globalInstance()->waitForDone();
    }
}

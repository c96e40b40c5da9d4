#include "movies/qt/ShockwaveFlash.h"
#include "tests/movies/Screening.h"
#include "tests/support/comesTrue.h"
#include "tests/support/readFile.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

namespace {

std::filesystem::path pathOf(const std::string& name) {
    return std::filesystem::path(COBWEAVE_MOVIES) / (name + ".swf");
}

/// How bright a colour is, as guidelines for contrast count it.
double brightness(QRgb color) {
    const auto part = [](int value) {
        const double share = value / 255.0;
        return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(qRed(color)) + 0.7152 * part(qGreen(color)) + 0.0722 * part(qBlue(color));
}

double contrast(QRgb one, QRgb other) {
    const double first = brightness(one) + 0.05;
    const double second = brightness(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

constexpr int framesUntilRest = 120;
constexpr QRgb captions = 0x000040;

class PageMovie : public testing::TestWithParam<std::string> {
protected:
    Screening screen{readFile(pathOf(GetParam()))};
};

TEST_P(PageMovie, FillsItsPlaceOnThePage) {
    const bool about = GetParam() == "about";
    EXPECT_EQ(screen.movie->frame.width(), (about ? 494 : 360) * 20);
    EXPECT_EQ(screen.movie->frame.height(), (about ? 233 : 56) * 20);
    EXPECT_EQ(screen.movie->version, 6U);
}

TEST_P(PageMovie, MovesForAFewSecondsAndThenRests) {
    EXPECT_TRUE(screen.player.moves());
    const QImage first = screen.picture();
    int frames = 0;
    for (; screen.player.moves() && frames < framesUntilRest; ++frames)
        screen.advance();
    EXPECT_FALSE(screen.player.moves());
    EXPECT_LT(frames / screen.movie->framesPerSecond, 4);
    EXPECT_NE(screen.picture(), first);
    EXPECT_EQ(screen.commands(), "");
}

TEST_P(PageMovie, TakesLittleToDraw) {
    constexpr int step = 15;
    for (int frame = 0; frame <= framesUntilRest; frame += step) {
        for (const double scale : {1.0, 1.25, 2.0}) {
            static_cast<void>(screen.picture(scale));
            EXPECT_FALSE(screen.outcome.cut);
            EXPECT_LT(screen.outcome.cost, DrawingBudget::whole * 0.6) << frame << ' ' << scale;
        }
        screen.advance(step);
    }
}

TEST_P(PageMovie, HasTextOfEnoughContrast) {
    screen.advance(framesUntilRest);
    const QImage image = screen.picture(2);
    // The ink of the text against the darkest of what is around it: the blue of the ground.
    int inked = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            inked += (image.pixel(x, y) & 0xFFFFFFU) == captions;
    }
    EXPECT_GT(inked, 300);
    EXPECT_GT(contrast(captions, 0xC7E0F7), 7);
    EXPECT_GT(contrast(0x1F3367, 0xDCEBFA), 7);
}

INSTANTIATE_TEST_SUITE_P(Ours, PageMovie,
                         testing::Values("about", "generaloptions", "signingin", "tsmessages",
                                         "alerts", "windowrename"),
                         [](const auto& tested) { return tested.param; });

class ButtonMovie : public testing::Test {
protected:
    Screening screen{readFile(pathOf("button"))};
    void mouse(bool held) { screen.player.mouse({1700, 340}, held); }
    void rest() {
        for (int frame = 0; screen.player.moves() && frame < 60; ++frame)
            screen.advance();
        EXPECT_FALSE(screen.player.moves());
    }
};

TEST_F(ButtonMovie, IsAsLargeAsTheButtonAndStandsStill) {
    EXPECT_EQ(screen.movie->frame.width(), 170 * 20);
    EXPECT_EQ(screen.movie->frame.height(), 34 * 20);
    EXPECT_FALSE(screen.player.moves());
    EXPECT_FALSE(screen.movie->background.has_value());
}

TEST_F(ButtonMovie, SaysClickOnAPress) {
    mouse(false);
    EXPECT_EQ(screen.commands(), "");
    mouse(true);
    EXPECT_EQ(screen.commands(), "click;");
    mouse(false);
    EXPECT_EQ(screen.commands(), "");
}

TEST_F(ButtonMovie, SaysClickOnSpaceAndEnter) {
    EXPECT_TRUE(screen.player.key(32));
    EXPECT_TRUE(screen.player.key(13));
    EXPECT_FALSE(screen.player.key(18));
    EXPECT_EQ(screen.commands(), "click;click;");
    rest();
}

TEST_F(ButtonMovie, HasAFaceForEachStateAndComesBack) {
    const QImage idle = screen.picture();
    mouse(false);
    rest();
    const QImage hovered = screen.picture();
    EXPECT_NE(hovered, idle);
    mouse(true);
    const QImage pressed = screen.picture();
    EXPECT_NE(pressed, hovered);
    EXPECT_NE(pressed, idle);
    mouse(false);
    screen.player.mouseLeft(false);
    EXPECT_TRUE(screen.player.moves());
    rest();
    EXPECT_EQ(screen.picture(), idle);
}

TEST_F(ButtonMovie, IsLightEnoughForItsCaptionInEveryState) {
    const auto expectLight = [&] {
        const QImage image = screen.picture();
        for (int y = 4; y < 30; ++y) {
            for (int x = 32; x < 164; x += 4)
                EXPECT_GT(contrast(captions, image.pixel(x, y)), 10);
        }
    };
    expectLight();
    mouse(false);
    rest();
    expectLight();
    mouse(true);
    expectLight();
}

constexpr const char* all[] = {"button",     "about",  "generaloptions", "signingin",
                               "tsmessages", "alerts", "windowrename"};

TEST(OurMovies, AreShown) {
    for (const char* name : all) {
        ShockwaveFlash control;
        control.setMovie(pathOf(name));
        control.resize(360, 200);
        QImage image(360, 200, QImage::Format_RGB32);
        image.fill(Qt::magenta);
        const QImage before = image;
        // A movie that takes long to read, on a busy machine, comes in pieces.
        EXPECT_TRUE(comesTrue([&] {
            control.render(&image, {}, {}, QWidget::DrawChildren);
            return image != before;
        })) << name;
    }
}

}  // namespace

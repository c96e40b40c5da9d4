#pragma once

#include "movies/format/geometry.h"
#include "movies/maker/Source.h"

#include <map>
#include <string>
#include <vector>

/// A colour of a gradient, and its place on the way.
struct Stop {
    double percent = 0;
    swf::Color tint;
};

/// What a fill or line is painted with: a colour, a gradient along a line or around a place, or a
/// picture.
struct Paint {
    enum class Kind { Solid, Linear, Radial, Picture };
    /// What lies beyond the ends of a gradient.
    enum class Spread : unsigned { Pad, Reflect, Repeat };
    Kind kind = Kind::Solid;
    swf::Color tint;
    double x = 0;
    double y = 0;
    /// Of a line its other end; of a circle its radius and nothing.
    double toX = 0;
    double toY = 0;
    std::vector<Stop> stops;
    Spread spread = Spread::Pad;
    /// Whether the light of the colours is mixed, and not their numbers.
    bool light = false;
    /// Where a radial gradient begins, from -100 to 100 percent of the radius.
    double focus = 0;
    /// Of a picture: its number, how large each of its pixels is, whether it comes over and over,
    /// and whether its pixels keep their edges.
    unsigned picture = 0;
    double pixel = 1;
    bool repeated = false;
    bool rough = false;
};

/// The colours, gradients and patterns that a description names.
class Paints {
public:
    /// "color NAME #rrggbb", or the same with another colour's name.
    void readColor(Statement& statement);
    /// "gradient NAME linear X Y X Y STOP..." or "gradient NAME radial X Y RADIUS STOP...", where a
    /// stop is a percentage and a colour. Ahead of the stops may stand: reflect or repeat, light,
    /// and focus PERCENT.
    void readGradient(Statement& statement);
    /// "pattern NAME PICTURE X Y PIXEL [repeat] [rough]", of the picture of a number.
    void readPattern(Statement& statement, const std::string& name, unsigned picture);
    /// The name of a gradient or pattern, or a colour: "#rrggbb" or a name, and "/" and its opacity
    /// in percent.
    [[nodiscard]] Paint paint(Statement& statement) const;
    /// A colour alone.
    [[nodiscard]] swf::Color tint(Statement& statement) const;

private:
    [[nodiscard]] swf::Color tintOf(const Statement& statement, const std::string& word) const;

    std::map<std::string, swf::Color> tints;
    std::map<std::string, Paint> named;
};

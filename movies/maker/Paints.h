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

/// What a fill or line is painted with: a colour, or a gradient along a line or around a place.
struct Paint {
    enum class Kind { Solid, Linear, Radial };
    Kind kind = Kind::Solid;
    swf::Color tint;
    double x = 0;
    double y = 0;
    /// Of a line its other end; of a circle its radius and nothing.
    double toX = 0;
    double toY = 0;
    std::vector<Stop> stops;
};

/// The colours and gradients that a description names.
class Paints {
public:
    /// "color NAME #rrggbb", or the same with another colour's name.
    void readColor(Statement& statement);
    /// "gradient NAME linear X Y X Y STOP..." or "gradient NAME radial X Y RADIUS STOP...", where a
    /// stop is a percentage and a colour.
    void readGradient(Statement& statement);
    /// A gradient's name, or a colour: "#rrggbb" or a name, and "/" and its opacity in percent.
    [[nodiscard]] Paint paint(Statement& statement) const;
    /// A colour alone.
    [[nodiscard]] swf::Color tint(Statement& statement) const;

private:
    [[nodiscard]] swf::Color tintOf(const Statement& statement, const std::string& word) const;

    std::map<std::string, swf::Color> tints;
    std::map<std::string, Paint> gradients;
};

#include "movies/maker/Paints.h"

#include <charconv>

namespace {

unsigned numberIn(const Statement& statement, const std::string& text, int base) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    if (error != std::errc() || end != text.data() + text.size()) {
        statement.complain("\"" + text + "\" is no number of a colour");
    }
    return value;
}

}  // namespace

void Paints::readColor(Statement& statement) {
    const std::string name = statement.word("a name");
    tints[name] = tint(statement);
    statement.finish();
}

void Paints::readGradient(Statement& statement) {
    const std::string name = statement.word("a name");
    Paint paint;
    if (statement.take("linear")) {
        paint.kind = Paint::Kind::Linear;
    } else {
        statement.expect("radial");
        paint.kind = Paint::Kind::Radial;
    }
    paint.x = statement.number("a place");
    paint.y = statement.number("a place");
    paint.toX = statement.number("an end or radius");
    if (paint.kind == Paint::Kind::Linear) paint.toY = statement.number("an end");
    if (statement.take("reflect")) paint.spread = Paint::Spread::Reflect;
    if (statement.take("repeat")) paint.spread = Paint::Spread::Repeat;
    paint.light = statement.take("light");
    if (statement.take("focus")) paint.focus = statement.number("a place from -100 to 100");
    while (statement.hasMore()) {
        const double percent = statement.number("a percentage");
        paint.stops.push_back({percent, tint(statement)});
    }
    if (paint.stops.empty() || paint.stops.size() > 8) {
        statement.complain("a gradient has one to eight colours");
    }
    named[name] = paint;
}

void Paints::readPattern(Statement& statement, const std::string& name, unsigned picture) {
    Paint paint;
    paint.kind = Paint::Kind::Picture;
    paint.picture = picture;
    paint.x = statement.number("a place");
    paint.y = statement.number("a place");
    paint.pixel = statement.number("the size of a pixel");
    paint.repeated = statement.take("repeat");
    paint.rough = statement.take("rough");
    named[name] = paint;
}

Paint Paints::paint(Statement& statement) const {
    const std::string& word = statement.word("a colour");
    const auto found = named.find(word);
    if (found != named.end()) return found->second;
    Paint paint;
    paint.tint = tintOf(statement, word);
    return paint;
}

swf::Color Paints::tint(Statement& statement) const {
    return tintOf(statement, statement.word("a colour"));
}

swf::Color Paints::tintOf(const Statement& statement, const std::string& word) const {
    const std::size_t slash = word.find('/');
    const std::string name = word.substr(0, slash);
    swf::Color tint;
    if (name.size() == 7 && name.front() == '#') {
        const unsigned value = numberIn(statement, name.substr(1), 16);
        const auto channel = [&](unsigned shift) {
            return static_cast<std::uint8_t>(value >> shift & 255U);
        };
        tint = {channel(16), channel(8), channel(0), 255};
    } else {
        const auto found = tints.find(name);
        if (found == tints.end()) statement.complain("no colour is called \"" + name + "\"");
        tint = found->second;
    }
    if (slash != std::string::npos) {
        const unsigned percent = numberIn(statement, word.substr(slash + 1), 10);
        if (percent > 100) statement.complain("an opacity is at most 100");
        tint.alpha = static_cast<std::uint8_t>((tint.alpha * percent + 50) / 100);
    }
    return tint;
}

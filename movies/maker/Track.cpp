#include "movies/maker/Track.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

/// How far a change has come when `part` of its time has passed.
double eased(double part, const std::string& ease) {
    const double left = 1 - part;
    if (ease == "in") return part * part * part;
    if (ease == "out") return 1 - left * left * left;
    if (ease == "both") return part * part * (3 - 2 * part);
    // Goes a little too far and comes back.
    if (ease == "spring") return 1 - left * left * (left - 1.7 * part);
    return part;
}

swf::Matrix matrixOf(const Look& look) {
    const double angle = look.turn * std::numbers::pi / 180;
    const double across = look.across / 100;
    const double down = look.down / 100;
    const double slant = angle + look.skew * std::numbers::pi / 180;
    // What stands upright leans to the right, and keeps its height.
    const double lean = down / std::cos(slant - angle);
    return {across * std::cos(angle), across * std::sin(angle),    -lean * std::sin(slant),
            lean * std::cos(slant),   look.x * swf::twipsPerPixel, look.y * swf::twipsPerPixel};
}

}  // namespace

void Track::readStart(Statement& statement) {
    if (statement.take("as")) name = statement.word("a name");
    if (statement.take("depth")) depth = static_cast<unsigned>(statement.whole("a depth"));
    statement.expect("at");
    Key key;
    key.frame = statement.whole("a frame");
    if (key.frame < 1) statement.complain("frames count from 1");
    readLook(statement, key.look);
    keys.push_back(key);
}

void Track::readChange(Statement& statement) {
    Key key = keys.back();
    key.frame = statement.whole("a frame");
    if (key.frame <= keys.back().frame) statement.complain("changes go forward in time");
    key.ease.clear();
    for (const char* ease : {"in", "out", "both", "spring"}) {
        if (statement.take(ease)) key.ease = ease;
    }
    readLook(statement, key.look);
    keys.push_back(key);
}

void Track::readEnd(Statement& statement) {
    end = statement.whole("a frame");
    if (end <= keys.back().frame) statement.complain("it ends before its last change");
    statement.finish();
}

void Track::readLook(Statement& statement, Look& look) {
    while (statement.hasMore()) {
        const std::string property = statement.word("a property");
        if (property == "mask") {
            masks = static_cast<unsigned>(statement.whole("a number of things"));
            continue;
        }
        const double value = statement.number("the value of " + property);
        if (property == "x") {
            look.x = value;
        } else if (property == "y") {
            look.y = value;
        } else if (property == "scale") {
            look.across = look.down = value;
        } else if (property == "across") {
            look.across = value;
        } else if (property == "down") {
            look.down = value;
        } else if (property == "turn") {
            look.turn = value;
        } else if (property == "skew") {
            look.skew = value;
        } else if (property == "alpha") {
            look.alpha = value;
        } else if (property == "grown") {
            look.grown = value;
        } else {
            statement.complain("nothing is called \"" + property + "\"");
        }
    }
}

void Track::addKey(int frame, Look look, const std::string& ease) {
    keys.push_back({frame, look, ease});
}

Look Track::lookAt(std::size_t key, int frame) const {
    const Key& to = keys[key];
    if (key == 0) return to.look;
    const Key& from = keys[key - 1];
    const double part =
        eased(static_cast<double>(frame - from.frame) / static_cast<double>(to.frame - from.frame),
              to.ease);
    const Look& one = from.look;
    const Look& two = to.look;
    using swf::between;
    return {between(one.x, two.x, part),           between(one.y, two.y, part),
            between(one.across, two.across, part), between(one.down, two.down, part),
            between(one.turn, two.turn, part),     between(one.skew, two.skew, part),
            between(one.alpha, two.alpha, part),   between(one.grown, two.grown, part)};
}

void Track::write(Frames& frames) const {
    Look before;
    bool placed = false;
    for (std::size_t key = 0; key < keys.size(); ++key) {
        const int first = key == 0 ? keys[0].frame : keys[key - 1].frame + 1;
        for (int frame = first; frame <= keys[key].frame; ++frame) {
            const Look look = lookAt(key, frame);
            if (placed && look == before) continue;
            frames[frame].append(
                swf::tag(swf::Tag::PlaceObject2, placement(look, placed ? &before : nullptr)));
            before = look;
            placed = true;
        }
    }
    if (end == 0) return;
    swf::Writer body;
    body.u16(depth);
    frames[end].append(swf::tag(swf::Tag::RemoveObject2, body));
}

int Track::lastFrame() const { return std::max(end, keys.back().frame); }

swf::Writer Track::placement(const Look& look, const Look* before) const {
    using namespace swf::placeFlag;
    const bool first = before == nullptr;
    Look plain = look;
    const Look& old = first ? Look() : *before;
    plain.alpha = old.alpha;
    plain.grown = old.grown;
    unsigned flags = first ? Character : Move;
    if (plain != old) flags |= Matrix;
    if (look.alpha != old.alpha) flags |= Colors;
    if (look.grown != old.grown || (first && look.grown != 0)) flags |= Ratio;
    if (first && !name.empty()) flags |= Name;
    if (first && masks > 0) flags |= ClipDepth;

    swf::Writer bytes;
    bytes.u8(flags);
    bytes.u16(depth);
    if (flags & Character) bytes.u16(character);
    if (flags & Matrix) bytes.matrix(matrixOf(look));
    if (flags & Colors) {
        // One factor for each colour and one for alpha, in 256ths, and nothing added.
        const auto alpha = static_cast<std::int32_t>(std::lround(look.alpha * 2.56));
        bytes.bits(1, 2);
        bytes.bits(10, 4);
        for (const std::int32_t factor : {256, 256, 256, std::clamp(alpha, 0, 256)}) {
            bytes.signedBits(factor, 10);
        }
    }
    if (flags & Ratio) {
        bytes.u16(static_cast<unsigned>(std::lround(std::clamp(look.grown, 0.0, 100.0) * 655.35)));
    }
    if (flags & Name) bytes.text(name);
    if (flags & ClipDepth) bytes.u16(depth + masks);
    return bytes;
}

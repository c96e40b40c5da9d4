#include "movies/maker/Score.h"

#include "movies/maker/actionCode.h"
#include "movies/maker/cobweb.h"
#include "movies/maker/shapeTags.h"

#include <algorithm>

namespace {

constexpr unsigned showFrame = 1;
constexpr unsigned doAction = 12;
constexpr unsigned frameLabel = 43;

}  // namespace

bool Score::read(Statement& statement) {
    if (statement.take("show")) {
        const unsigned thing = definitions.find(statement, statement.word("a thing"));
        tracks.emplace_back(thing, static_cast<unsigned>(tracks.size()) + 1);
        tracks.back().readStart(statement);
    } else if (statement.take("to")) {
        if (tracks.empty()) statement.complain("nothing is shown yet");
        tracks.back().readChange(statement);
    } else if (statement.take("gone")) {
        if (tracks.empty()) statement.complain("nothing is shown yet");
        tracks.back().readEnd(statement);
    } else if (statement.take("frames")) {
        frames = statement.whole("a number of frames");
    } else if (statement.take("frame")) {
        readFrame(statement);
    } else if (statement.take("web")) {
        readWeb(statement);
    } else {
        return false;
    }
    return true;
}

void Score::readFrame(Statement& statement) {
    const int frame = statement.whole("a frame");
    frames = std::max(frames, frame);
    if (statement.take("label")) {
        Bytes body;
        body.text(statement.word("a label"));
        extras[frame].append(tag(frameLabel, body));
    } else {
        Bytes body = actionCode::read(statement);
        body.u8(0);
        extras[frame].append(tag(doAction, body));
    }
    statement.finish();
}

void Score::readWeb(Statement& statement) {
    for (const cobweb::Strand& strand : cobweb::read(statement, paints)) {
        const unsigned number = definitions.add(statement, "");
        definitions.append(shapeTags::growing(number, strand.line));
        Track& track = tracks.emplace_back(number, static_cast<unsigned>(tracks.size()) + 1);
        Look look;
        look.grown = 0;
        track.addKey(strand.begin, look, "");
        look.grown = 100;
        track.addKey(strand.end, look, "out");
    }
}

int Score::frameCount() const {
    int last = frames;
    for (const Track& track : tracks)
        last = std::max(last, track.lastFrame());
    return last;
}

Bytes Score::tags() const {
    Frames all = extras;
    for (const Track& track : tracks)
        track.write(all);
    Bytes bytes;
    for (int frame = 1; frame <= frameCount(); ++frame) {
        const auto found = all.find(frame);
        if (found != all.end()) bytes.append(found->second);
        bytes.append(tag(showFrame, {}));
    }
    return bytes;
}

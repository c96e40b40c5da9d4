#include "movies/maker/Score.h"

#include "movies/maker/actionCode.h"
#include "movies/maker/cobweb.h"
#include "movies/maker/shapeTags.h"

#include <algorithm>

unsigned Definitions::add(const Statement& statement, const std::string& name) {
    ++last;
    if (!name.empty() && !numbers.emplace(name, last).second) {
        statement.complain("there is a \"" + name + "\" already");
    }
    return last;
}

unsigned Definitions::find(const Statement& statement, const std::string& name) const {
    const auto found = numbers.find(name);
    if (found == numbers.end()) statement.complain("nothing is called \"" + name + "\"");
    return found->second;
}

bool Score::read(Statement& statement) {
    if (statement.take("show")) {
        const unsigned thing = definitions.find(statement, statement.word("a thing"));
        tracks.emplace_back(thing, static_cast<unsigned>(tracks.size()) + 1);
        tracks.back().readStart(statement);
    } else if (statement.take("many")) {
        readMany(statement);
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
    swf::Writer body;
    if (statement.take("label")) {
        body.text(statement.word("a label"));
        extras[frame].append(swf::tag(swf::Tag::FrameLabel, body));
    } else if (statement.take("background")) {
        body.color(paints.tint(statement), false);
        extras[frame].append(swf::tag(swf::Tag::SetBackgroundColor, body));
    } else {
        body = actionCode::read(statement);
        body.code(swf::Action::End);
        extras[frame].append(swf::tag(swf::Tag::DoAction, body));
    }
    statement.finish();
}

void Score::readMany(Statement& statement) {
    const unsigned thing = definitions.find(statement, statement.word("a thing"));
    const int columns = statement.whole("a number of columns");
    const int rows = statement.whole("a number of rows");
    const double step = statement.number("a step");
    statement.expect("at");
    const int frame = statement.whole("a frame");
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            Look look;
            look.x = column * step;
            look.y = row * step;
            Track& track = tracks.emplace_back(thing, static_cast<unsigned>(tracks.size()) + 1);
            track.addKey(frame, look, "");
        }
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

swf::Writer Score::tags(bool isOpen) const {
    Frames all = extras;
    for (const Track& track : tracks)
        track.write(all);
    swf::Writer bytes;
    for (int frame = 1; frame <= frameCount(); ++frame) {
        const auto found = all.find(frame);
        if (found != all.end()) bytes.append(found->second);
        if (!isOpen || frame < frameCount()) bytes.append(swf::tag(swf::Tag::ShowFrame));
    }
    return bytes;
}

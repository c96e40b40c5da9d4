#pragma once

#include "movies/format/Writer.h"
#include "movies/maker/Paints.h"
#include "movies/maker/Source.h"
#include "movies/maker/Track.h"

#include <map>
#include <string>
#include <vector>

/// The things that a movie is made of, by name, and the tags that define them.
class Definitions {
public:
    /// The number of a new thing, whose tag is to be appended then. Its name may be empty.
    [[nodiscard]] unsigned add(const Statement& statement, const std::string& name);
    /// Appends the tag of the thing that was added last.
    void append(const swf::Writer& tag) { tags.append(tag); }
    /// Complains when nothing has the name.
    [[nodiscard]] unsigned find(const Statement& statement, const std::string& name) const;

    /// The tags of all things.
    [[nodiscard]] const swf::Writer& get() const { return tags; }

private:
    std::map<std::string, unsigned> numbers;
    unsigned last = 0;
    swf::Writer tags;
};

/// What happens when, in a movie or sprite.
class Score {
public:
    /// One empty frame. Things are looked up in `definitions`, colours in `paints`; both outlive
    /// it.
    Score(Definitions& definitions, const Paints& paints)
        : definitions(definitions), paints(paints) {}

    /// Takes a line of one of the kinds below; false when it is none.
    ///     show THING ...                       see Track; later ones lie over earlier ones
    ///     many THING COLUMNS ROWS STEP at FRAME
    ///     to FRAME ... / gone FRAME            go on with the last thing shown
    ///     frame FRAME label NAME / background COLOR / what actionCode reads
    ///     frames COUNT
    ///     web COLOR WIDTH at X Y radius R spokes N rings N arc FROM TO from FRAME to FRAME
    [[nodiscard]] bool read(Statement& statement);

    /// The tags of all frames, and how many frames there are. The last frame may be left without
    /// its end.
    [[nodiscard]] swf::Writer tags(bool isOpen = false) const;
    [[nodiscard]] int frameCount() const;

private:
    void readFrame(Statement& statement);
    void readMany(Statement& statement);
    void readWeb(Statement& statement);

    Definitions& definitions;
    const Paints& paints;
    std::vector<Track> tracks;
    Frames extras;
    int frames = 1;
};

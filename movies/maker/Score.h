#pragma once

#include "movies/maker/Bytes.h"
#include "movies/maker/Definitions.h"
#include "movies/maker/Paints.h"
#include "movies/maker/Source.h"
#include "movies/maker/Track.h"

#include <vector>

/// What happens when, in a movie or sprite.
class Score {
public:
    Score(Definitions& definitions, const Paints& paints)
        : definitions(definitions), paints(paints) {}

    /// Takes a line of one of the kinds below; false when it is none.
    ///     show THING [as NAME] at FRAME ...    see Track; later ones lie over earlier ones
    ///     to FRAME ... / gone FRAME            go on with the last thing shown
    ///     frame FRAME stop / label NAME / command NAME
    ///     frames COUNT
    ///     web COLOR WIDTH at X Y radius R spokes N rings N arc FROM TO from FRAME to FRAME
    [[nodiscard]] bool read(Statement& statement);

    /// The tags of all frames, and how many frames there are.
    [[nodiscard]] Bytes tags() const;
    [[nodiscard]] int frameCount() const;

private:
    void readFrame(Statement& statement);
    void readWeb(Statement& statement);

    Definitions& definitions;
    const Paints& paints;
    std::vector<Track> tracks;
    Frames extras;
    int frames = 1;
};

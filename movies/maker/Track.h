#pragma once

#include "movies/format/Writer.h"
#include "movies/maker/Source.h"

#include <map>
#include <string>
#include <vector>

/// How something looks in one frame; lengths in pixels, shares in percent.
struct Look {
    double x = 0;
    double y = 0;
    double across = 100;
    double down = 100;
    double turn = 0;
    double skew = 0;
    double alpha = 100;
    double grown = 100;
    bool operator==(const Look&) const = default;
};

/// The tags of a timeline, by frame, from 1.
using Frames = std::map<int, swf::Writer>;

/// One thing on a timeline: from when to when it is there, and how it changes meanwhile.
class Track {
public:
    /// The thing of this number, which has no look yet. Larger depths lie over smaller ones.
    Track(unsigned character, unsigned depth) : character(character), depth(depth) {}

    /// "[as NAME] [depth N] at FRAME LOOK... [mask COUNT]", where LOOK is a word and its value: x,
    /// y, scale, across, down, turn, skew, alpha, grown.
    void readStart(Statement& statement);
    /// "FRAME [in or out or both or spring] LOOK...": changes to that from the last look on.
    void readChange(Statement& statement);
    /// "FRAME": is gone from that on.
    void readEnd(Statement& statement);

    /// Adds a look that is reached at `frame`, with the ease of the words above.
    void addKey(int frame, Look look, const std::string& ease);
    /// Appends the tags that place, change and remove the thing.
    void write(Frames& frames) const;
    /// The last frame in which something happens.
    [[nodiscard]] int lastFrame() const;

private:
    struct Key {
        int frame = 1;
        Look look;
        std::string ease;
    };
    void readLook(Statement& statement, Look& look);
    [[nodiscard]] Look lookAt(std::size_t key, int frame) const;
    [[nodiscard]] swf::Writer placement(const Look& look, const Look* before) const;

    unsigned character;
    unsigned depth;
    std::string name;
    std::vector<Key> keys;
    unsigned masks = 0;
    int end = 0;
};

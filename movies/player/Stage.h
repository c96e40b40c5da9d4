#pragma once

#include "movies/player/Instance.h"
#include "movies/player/Movie.h"

#include <memory>
#include <unordered_map>
#include <vector>

namespace swf {

/// What stands on the stage of a movie, and the ways in which its frames change that. All work is
/// counted; when what a turn may take is used up, the rest of the turn is left out.
class Stage {
public:
    /// The stage is empty until `start`. The movie outlives it.
    explicit Stage(const Movie& movie);

    /// The movie that stands on it.
    [[nodiscard]] const Movie& movie() const { return content; }
    /// The movie itself, which is always there.
    [[nodiscard]] Clip& root() { return main; }
    [[nodiscard]] const Clip& root() const { return main; }
    /// The clip of this number; null when it has gone.
    [[nodiscard]] Clip* find(InstanceNumber clip) const;

    /// Begins a turn: a frame, a click or a key.
    void beginTurn();
    /// Takes some of the turn's work; false when there is none left.
    [[nodiscard]] bool work(unsigned pieces = 1);
    /// Whether the turn has used up its work.
    [[nodiscard]] bool exhausted() const { return workLeft == 0; }

    /// Plays the first frame of the movie.
    void start();
    /// All clips that play go on by a frame.
    void advance();
    /// Shows another frame of the clip; one behind the last is the first. Its actions are queued.
    void goTo(Clip& clip, std::size_t frame);
    /// Shows another state of a button.
    void setState(Face& face, ButtonRecord::State state);
    /// Code that a button or frame wants carried out.
    void queue(InstanceNumber clip, std::string_view code) { waiting.push_back({clip, code}); }

    /// Code that is still to be carried out, and the clip that it is about.
    struct Waiting {
        InstanceNumber clip;
        std::string_view code;
    };
    /// What waits to be carried out, in the order in which it came.
    [[nodiscard]] std::vector<Waiting>& queued() { return waiting; }

    /// Whether a clip plays.
    [[nodiscard]] bool moves() const;
    /// Whether anything changed since the last call.
    [[nodiscard]] bool takeChange();

private:
    void advance(Clip& clip);
    void advanceInner(DisplayList& list);
    void applyFrame(Clip& clip, std::size_t frame, DisplayList& old, bool withActions);
    void apply(Clip& clip, const Place& place, std::size_t frame, DisplayList& old);
    /// Puts a new instance, or the one that was in `old` in its place, into `list`.
    Instance* put(DisplayList& list, DisplayList& old, std::uint16_t depth, std::uint16_t character,
                  std::size_t origin, InstanceNumber parent, unsigned nesting);
    void remove(DisplayList& list, DisplayList::iterator entry);
    void release(Instance& instance);
    void release(DisplayList& list);

    const Movie& content;
    Clip main;
    std::unordered_map<InstanceNumber, Clip*> clips;
    std::vector<Waiting> waiting;
    InstanceNumber lastNumber = 0;
    std::size_t instances = 0;
    std::uint64_t turn = 0;
    unsigned workLeft = 0;
    bool changed = true;
};

}  // namespace swf

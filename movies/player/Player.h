#pragma once

#include "movies/player/Stage.h"

#include <memory>
#include <string>
#include <vector>

namespace swf {

/// What a movie tells its host.
struct Command {
    std::string name;
    std::string arguments;
};

/// Plays a movie: turn by turn, each of them short whatever the movie asks for. What a movie tells
/// its host is kept until it is taken, so that the host may do as it likes then.
class Player {
public:
    explicit Player(std::shared_ptr<const Movie> movie);

    [[nodiscard]] const Movie& movie() const { return *content; }
    [[nodiscard]] const DisplayList& stage() const { return scene.root().list; }

    /// Goes on by a frame.
    void advance();
    /// Whether going on changes anything.
    [[nodiscard]] bool moves() const { return !ended && scene.moves(); }
    /// Whether anything looks otherwise than at the last call.
    [[nodiscard]] bool takeChange() { return scene.takeChange(); }

    /// The mouse is at the place, with its button held or not.
    void mouse(Point place, bool held);
    void mouseLeft(bool held);
    /// Whether the mouse stands over a button of the movie.
    [[nodiscard]] bool overButton() const { return hovered != 0; }
    /// A key went down: a character, or one of the codes that files have for other keys. False when
    /// nothing waits for it.
    bool key(unsigned code);

    [[nodiscard]] std::vector<Command> takeCommands();

private:
    void beginTurn() { scene.beginTurn(); }
    void endTurn();
    void runQueued();
    void follow(InstanceNumber over, bool held);
    void change(InstanceNumber button, ButtonRecord::State state, ButtonEvent event);

    std::shared_ptr<const Movie> content;
    Stage scene;
    std::vector<Command> commands;
    InstanceNumber hovered = 0;
    /// The button that the mouse went down on, while it is held.
    InstanceNumber captured = 0;
    bool capturedInside = false;
    bool wasHeld = false;
    bool mouseKnown = false;
    Point lastPlace;
    unsigned exhaustedTurns = 0;
    bool ended = false;
};

}  // namespace swf

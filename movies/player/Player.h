#pragma once

#include "movies/player/Stage.h"
#include "movies/player/buttons.h"

#include <memory>
#include <string>
#include <vector>

namespace swf {

/// A command that a movie gives its host.
struct Command {
    std::string name;
    std::string arguments;
};

/// Plays a movie: turn by turn, each of them short whatever the movie asks for. Its commands are
/// kept until they are taken, so that the host may do anything then, such as end the player.
class Player {
public:
    /// Plays the first frame at once.
    explicit Player(std::shared_ptr<const Movie> movie);

    /// The movie that is played.
    [[nodiscard]] const Movie& movie() const { return *content; }
    /// What is to be drawn.
    [[nodiscard]] const DisplayList& stage() const { return scene.root().list; }

    /// Plays the next frame.
    void advance();
    /// Whether playing on can change anything.
    [[nodiscard]] bool moves() const { return !ended && scene.moves(); }
    /// Whether the picture may have changed since the last call.
    [[nodiscard]] bool takeChange() { return scene.takeChange(); }

    /// The mouse is at the place, with its button held or not.
    void mouse(Point place, bool held);
    /// The mouse is outside the movie.
    void mouseLeft(bool held);
    /// Whether the mouse stands over a button of the movie.
    [[nodiscard]] bool overButton() const { return !hovered.empty(); }
    /// A key went down: a character, or one of the codes that files have for other keys. False when
    /// no button has actions for it.
    bool key(unsigned code);

    /// The commands since the last call, in their order.
    [[nodiscard]] std::vector<Command> takeCommands();

private:
    void beginTurn() { scene.beginTurn(); }
    void endTurn();
    void runQueued();
    void follow(const ButtonPath& over, bool held);
    void change(const ButtonPath& path, ButtonRecord::State state, ButtonEvent event);
    /// Gives a button that was placed anew the state of the one that it stands for.
    void restoreState();

    std::shared_ptr<const Movie> content;
    Stage scene;
    std::vector<Command> commands;
    ButtonPath hovered;
    /// The button that the mouse went down on, while it is held.
    ButtonPath captured;
    bool capturedInside = false;
    bool wasHeld = false;
    bool mouseKnown = false;
    Point lastPlace;
    unsigned exhaustedTurns = 0;
    bool ended = false;
};

}  // namespace swf

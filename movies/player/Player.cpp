#include "movies/player/Player.h"

#include "movies/player/actions.h"
#include "movies/player/limits.h"

#include <algorithm>
#include <utility>

namespace swf {

Player::Player(std::shared_ptr<const Movie> movie) : content(std::move(movie)), scene(*content) {
    beginTurn();
    scene.start();
    endTurn();
}

void Player::advance() {
    if (ended) return;
    beginTurn();
    scene.advance();
    runQueued();
    // Buttons may have moved under the mouse, or away from it.
    if (mouseKnown) {
        follow(buttonAt(scene, lastPlace), wasHeld);
        restoreState();
    }
    endTurn();
}

void Player::mouse(Point place, bool held) {
    mouseKnown = true;
    lastPlace = place;
    beginTurn();
    follow(buttonAt(scene, place), held);
    endTurn();
}

void Player::mouseLeft(bool held) {
    mouseKnown = false;
    beginTurn();
    follow({}, held);
    endTurn();
}

bool Player::key(unsigned code) {
    if (code == 0) return false;
    beginTurn();
    bool taken = false;
    eachButton(scene, [&](const Instance& instance) {
        for (const ButtonActions& actions : instance.face->button->actions) {
            if (actions.key != code || !scene.work()) continue;
            scene.queue(instance.face->parent, actions.code);
            taken = true;
        }
    });
    endTurn();
    return taken;
}

std::vector<Command> Player::takeCommands() { return std::exchange(commands, {}); }

void Player::endTurn() {
    runQueued();
    exhaustedTurns = scene.exhausted() ? exhaustedTurns + 1 : 0;
    // It would go on like this for ever.
    if (exhaustedTurns >= limits::exhaustedFrames) ended = true;
}

void Player::runQueued() {
    while (!scene.queued().empty()) {
        // What a clip has queued comes before what older ones have, so that parents come last.
        auto queue = std::exchange(scene.queued(), {});
        std::stable_sort(queue.begin(), queue.end(),
                         [](const auto& one, const auto& other) { return one.clip > other.clip; });
        // What a clip has begun goes on when the clip has gone meanwhile; else it is not begun.
        InstanceNumber begun = 0;
        for (const Stage::Waiting& next : queue) {
            if (next.clip != begun && scene.find(next.clip) == nullptr) continue;
            begun = next.clip;
            runActions(scene, next.clip, next.code, commands);
        }
    }
}

void Player::follow(const ButtonPath& over, bool held) {
    using State = ButtonRecord::State;
    const bool pressed = held && !wasHeld;
    const bool released = !held && wasHeld;
    wasHeld = held;
    if (!captured.empty()) {
        const bool inside = over == captured;
        if (released) {
            hovered = inside ? captured : ButtonPath();
            change(captured, inside ? State::Over : State::Up,
                   inside ? ButtonEvent::OverDownToOverUp : ButtonEvent::OutDownToIdle);
            captured.clear();
        } else if (inside != capturedInside) {
            capturedInside = inside;
            change(captured, inside ? State::Down : State::Over,
                   inside ? ButtonEvent::OutDownToOverDown : ButtonEvent::OverDownToOutDown);
        }
        if (!captured.empty()) return;
    }
    // A mouse that comes with its button held has gone down elsewhere.
    if (held && !pressed) return;
    if (over != hovered) {
        change(std::exchange(hovered, over), State::Up, ButtonEvent::OverUpToIdle);
        change(hovered, State::Over, ButtonEvent::IdleToOverUp);
    }
    if (pressed && !hovered.empty()) {
        captured = hovered;
        capturedInside = true;
        change(captured, State::Down, ButtonEvent::OverUpToOverDown);
    }
}

void Player::change(const ButtonPath& path, ButtonRecord::State state, ButtonEvent event) {
    const Instance* const button = findButton(scene, path);
    if (button == nullptr) return;
    Face& face = *button->face;
    if (face.state != state) scene.setState(face, state);
    for (const ButtonActions& actions : face.button->actions) {
        if (actions.events & static_cast<unsigned>(event)) scene.queue(face.parent, actions.code);
    }
}

void Player::restoreState() {
    const bool held = !captured.empty();
    const Instance* const button = findButton(scene, held ? captured : hovered);
    if (button == nullptr) return;
    const auto state = held && capturedInside ? ButtonRecord::Down : ButtonRecord::Over;
    if (button->face->state != state) scene.setState(*button->face, state);
}

}  // namespace swf

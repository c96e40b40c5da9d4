#include "tests/movies/MovieFile.h"
#include "tests/movies/Screening.h"

#include <gtest/gtest.h>

namespace {

using swf::PushType;

const Bits stop = action(Action::Stop);
const Bits play = action(Action::Play);

/// A movie of five frames, each of which gives its number as a command; the first does something
/// before that.
std::string frames(const Bits& first) {
    MovieFile movie;
    movie.actions(first).actions(command("1")).show();
    for (int frame = 2; frame <= 5; ++frame) {
        if (frame == 4) movie.label("four");
        movie.actions(command(std::to_string(frame))).show();
    }
    return movie.file();
}

/// The numbers of the frames that are played.
std::string played(const Bits& first, int turns = 3) {
    Screening screen(frames(first));
    screen.advance(turns);
    return screen.commands();
}

TEST(MovieAction, LeftAloneGoesOnFrameByFrame) { EXPECT_EQ(played({}, 6), "1;2;3;4;5;1;2;"); }

TEST(MovieAction, Stops) {
    Screening screen(frames(stop));
    EXPECT_FALSE(screen.player.moves());
    EXPECT_EQ(played(stop), "1;");
    EXPECT_EQ(played(stop + play), "1;2;3;4;");
}

TEST(MovieAction, GoesToFramesAndLabels) {
    EXPECT_EQ(played(action(Action::GotoFrame, Bits().u16(2))), "1;3;");
    EXPECT_EQ(played(action(Action::GotoFrame, Bits().u16(2)) + play), "1;3;4;5;1;3;");
    EXPECT_EQ(played(action(Action::GoToLabel, Bits().text("four"))), "1;4;");
    EXPECT_EQ(played(action(Action::GoToLabel, Bits().text("five"))), "1;2;3;4;");
    EXPECT_EQ(played(action(Action::GotoFrame, Bits().u16(2000))), "1;5;");
    EXPECT_EQ(played(action(Action::NextFrame)), "1;2;");
    EXPECT_EQ(played(action(Action::GotoFrame, Bits().u16(2)) + action(Action::PreviousFrame)),
              "1;3;2;");
}

TEST(MovieAction, GoesToWhatStandsOnTheStack) {
    const auto number = [](unsigned value) {
        return action(Action::Push, Bits().code(PushType::Integer).u32(value));
    };
    EXPECT_EQ(played(number(3) + action(Action::GotoFrame2, Bits().u8(0))), "1;3;");
    EXPECT_EQ(played(number(3) + action(Action::GotoFrame2, Bits().u8(1))), "1;3;4;5;1;3;");
    EXPECT_EQ(played(number(1) + action(Action::GotoFrame2, Bits().u8(2).u16(4))), "1;5;");
    EXPECT_EQ(played(pushText("four") + action(Action::GotoFrame2, Bits().u8(0))), "1;4;");
    EXPECT_EQ(played(pushText("/:2") + action(Action::GotoFrame2, Bits().u8(0))), "1;2;");
    const Bits real = action(Action::Push, Bits().code(PushType::Double).u32(0x40100000).u32(0));
    EXPECT_EQ(played(real + action(Action::GotoFrame2, Bits().u8(0))), "1;4;");
    const Bits single = action(Action::Push, Bits().code(PushType::Float).u32(0x40400000));
    EXPECT_EQ(played(single + action(Action::GotoFrame2, Bits().u8(0))), "1;3;");
    const Bits pool = action(Action::ConstantPool, Bits().u16(2).text("x").text("four"));
    EXPECT_EQ(played(pool + action(Action::Push, Bits().code(PushType::Constant8).u8(1)) +
                     action(Action::GotoFrame2, Bits().u8(0))),
              "1;4;");
    EXPECT_EQ(played(pool + action(Action::Push, Bits().code(PushType::Constant16).u16(1)) +
                     action(Action::GotoFrame2, Bits().u8(0))),
              "1;4;");
}

std::string commandsOf(const Bits& code) {
    return Screening(MovieFile().actions(code).show().file()).commands();
}

TEST(MovieAction, GivesItsHostCommandsWithTheirArguments) {
    Screening screen(
        MovieFile()
            .actions(action(Action::GetURL, Bits().text("fsCOMMAND:Say").text("it loud")))
            .show()
            .file());
    const auto commands = screen.player.takeCommands();
    ASSERT_EQ(commands.size(), 1U);
    EXPECT_EQ(commands[0].name, "Say");
    EXPECT_EQ(commands[0].arguments, "it loud");
}

TEST(MovieAction, GivesItsHostCommandsFromTheStack) {
    const Bits give = action(Action::GetURL2, Bits().u8(0));
    EXPECT_EQ(commandsOf(pushText("FSCommand:go") + pushText("") + give), "go;");
    EXPECT_EQ(commandsOf(pushText("FSCommand:") + pushText("joined") + action(Action::StringAdd) +
                         pushText("") + give),
              "joined;");
    EXPECT_EQ(commandsOf(give), "");
}

TEST(MovieAction, OpensNoAddress) {
    EXPECT_EQ(commandsOf(action(Action::GetURL, Bits().text("http://localhost/").text("_blank"))),
              "");
    EXPECT_EQ(commandsOf(action(Action::GetURL, Bits().text("javascript:FSCommand:x").text(""))),
              "");
    EXPECT_EQ(commandsOf(action(Action::GetURL, Bits().text("FSComman").text(""))), "");
}

TEST(MovieAction, GoesOnAfterWhatItDoesNotKnow) {
    const Bits unknown = pushText("a") + pushText("b") + action(unknownAction(0x1D));
    EXPECT_EQ(commandsOf(unknown + command("on")), "on;");
    EXPECT_EQ(commandsOf(action(unknownAction(0xB7), Bits().raw("what")) + command("on")), "on;");
}

TEST(MovieAction, PassesOverBodiesAndEndsAtBranches) {
    const std::string body = command("no").get();
    const auto size = static_cast<unsigned>(body.size());
    const Bits function =
        action(Action::DefineFunction, Bits().text("f").u16(1).text("p").u16(size));
    EXPECT_EQ(commandsOf(Bits(function).raw(body) + command("on")), "on;");
    const Bits second = action(Action::DefineFunction2,
                               Bits().text("f").u16(1).u8(2).u16(0).u8(1).text("p").u16(size));
    EXPECT_EQ(commandsOf(Bits(second).raw(body) + command("on")), "on;");
    EXPECT_EQ(commandsOf(Bits(action(Action::With, Bits().u16(size))).raw(body) + command("on")),
              "on;");
    EXPECT_EQ(commandsOf(command("on") + action(Action::If, Bits().u16(2)) + command("no")), "on;");
    EXPECT_EQ(commandsOf(command("on") + action(Action::Jump, Bits().u16(0xFFF0)) + command("no")),
              "on;");
}

/// Two sprites within each other, `a` and `b`, of three frames that give their names as commands.
MovieFile nested() {
    MovieFile inner;
    inner.actions(stop).show().actions(command("b2")).show().actions(command("b3")).show();
    MovieFile outer;
    outer.placeNamed(1, 1, "b").actions(stop).show().actions(command("a2")).show().show();
    return MovieFile().sprite(1, inner).sprite(2, outer).placeNamed(2, 1, "a");
}

std::string commandsOfNested(const Bits& code) {
    Screening screen(nested().show().actions(code).show().actions(stop).show().file());
    screen.advance();
    return screen.commands();
}

TEST(MovieAction, ReachesOtherSpritesByTheirPath) {
    const Bits second = action(Action::GotoFrame, Bits().u16(1));
    const auto target = [](const char* path) {
        return action(Action::SetTarget, Bits().text(path));
    };
    EXPECT_EQ(commandsOfNested(target("a") + second), "a2;");
    EXPECT_EQ(commandsOfNested(target("/a/b") + second), "b2;");
    EXPECT_EQ(commandsOfNested(target("A/B") + second), "b2;");
    EXPECT_EQ(commandsOfNested(target("_root.a.b") + second), "b2;");
    EXPECT_EQ(commandsOfNested(target("a.b._parent") + second), "a2;");
    EXPECT_EQ(commandsOfNested(target("/a/b/..") + second), "a2;");
    EXPECT_EQ(commandsOfNested(target("_level0/a") + second), "a2;");
    EXPECT_EQ(commandsOfNested(target("this.a") + second), "a2;");
    EXPECT_EQ(commandsOfNested(target("nobody") + second), "");
    EXPECT_EQ(commandsOfNested(target("a") + target("/a/b") + second + target("") + play), "b2;");
    EXPECT_EQ(commandsOfNested(pushText("/a/b") + action(Action::SetTarget2) + second), "b2;");
    EXPECT_EQ(commandsOfNested(pushText("/a/b:3") + action(Action::GotoFrame2, Bits().u8(0))),
              "b3;");
}

TEST(MovieAction, MayTakeAwayItsOwnSprite) {
    MovieFile inner;
    inner.show()
        .actions(action(Action::SetTarget, Bits().text("/")) +
                 action(Action::GotoFrame, Bits().u16(2)) + command("gone"))
        .actions(command("and on"))
        .show();
    MovieFile movie;
    movie.sprite(1, inner)
        .place(1, 1)
        .actions(stop)
        .show()
        .show()
        .remove(1)
        .actions(command("end"))
        .show();
    Screening screen(movie.file());
    screen.advance(3);
    EXPECT_EQ(screen.commands(), "gone;and on;end;");
    EXPECT_TRUE(screen.player.stage().empty());
}

TEST(MovieAction, OfASpriteThatHasGoneBeforeIsNotBegun) {
    MovieFile older;
    older.actions(command("older")).show();
    MovieFile newer;
    newer.actions(action(Action::SetTarget, Bits().text("/")) +
                  action(Action::GotoFrame, Bits().u16(1)) + command("newer"));
    MovieFile movie;
    movie.sprite(1, older).sprite(2, newer.show()).place(1, 1).place(2, 2).actions(stop).show();
    Screening screen(movie.remove(1).show().file());
    EXPECT_EQ(screen.commands(), "newer;");
}

TEST(MovieAction, FindsTheMovieWhenItsOwnSpriteHasGone) {
    const auto goTo = [](const char* path, unsigned frame) {
        return action(Action::SetTarget, Bits().text(path)) +
               action(Action::GotoFrame, Bits().u16(frame));
    };
    for (const char* path : {"/", "_root", "_level0"}) {
        MovieFile inner;
        inner.show().actions(goTo("/", 2) + goTo(path, 1)).show();
        MovieFile movie;
        movie.sprite(1, inner).place(1, 1).actions(stop).show();
        movie.actions(command("one")).show().remove(1).actions(command("two")).show();
        Screening screen(movie.file());
        screen.advance();
        EXPECT_EQ(screen.commands(), "two;one;") << path;
    }
}

TEST(MovieAction, FindsLabelsInCapitalsAsWell) {
    EXPECT_EQ(played(action(Action::GoToLabel, Bits().text("FOUR"))), "1;4;");
}

TEST(MovieAction, OfTheNewestThingComesFirstAndOfTheParentLast) {
    const auto sprite = [](const std::string& name) {
        MovieFile inner;
        return inner.actions(command(name + "1")).show().actions(command(name + "2")).show();
    };
    MovieFile movie;
    movie.sprite(1, sprite("a")).sprite(2, sprite("b"));
    movie.actions(command("root1")).place(1, 1).place(2, 2).show();
    Screening screen(movie.actions(command("root2")).show().file());
    EXPECT_EQ(screen.commands(), "b1;a1;root1;");
    screen.advance();
    EXPECT_EQ(screen.commands(), "b2;a2;root2;");
}

}  // namespace

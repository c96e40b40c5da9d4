#include "tests/platform/linux/bus/PlayerBus.h"

#include <QDBusVariant>
#include <QElapsedTimer>
#include <QTimer>

#include <set>

namespace {

class MisbehavingPlayer : public PlayerBus {
protected:
    [[nodiscard]] static Child startPlayer(const char* argument) {
        Child child({"/proc/self/exe", argument});
        (void)child.readLine();
        return child;
    }
};

TEST_F(MisbehavingPlayer, ThatHangsBlocksNothing) {
    const Child silent = startPlayer(misbehaving::silent);
    start();
    ScriptedPlayer one("one", withSong("Paused", "", "First"));
    EXPECT_TRUE(shows("1. First - Winamp [Paused]"));
    one.changeTitle("Second");
    EXPECT_TRUE(shows("1. Second - Winamp [Paused]"));
}

TEST_F(MisbehavingPlayer, ThatHangsAfterItsStartBlocksNothing) {
    start();
    ScriptedPlayer one("one", withSong("Stopped", "", "First"));
    ASSERT_TRUE(shows("1. First - Winamp"));
    Child frozen = startPlayer(misbehaving::frozen);
    ASSERT_TRUE(shows("1. Frozen - Winamp"));
    (void)frozen.readLine();
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 100; ++i) {
        command(40046);
        (void)title();
    }
    EXPECT_LT(timer.elapsed(), 1000);
    one.changeStatus("Playing");
    EXPECT_TRUE(shows("1. First - Winamp"));
}

TEST_F(MisbehavingPlayer, ThatFloodsLetsTimersTickAndItsTitlesThrough) {
    start();
    const Child flood = startPlayer(misbehaving::flooding);
    ASSERT_TRUE(comesTrue([&] { return player->WinampWindow() != 0; }));
    std::set<std::string> titles;
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        ++ticks;
        titles.insert(title());
    });
    timer.start(1);
    EXPECT_TRUE(comesTrue([&] { return ticks >= 200 && titles.size() >= 20; }))
        << ticks << " ticks, " << titles.size() << " titles";
}

TEST_F(MisbehavingPlayer, ThatReportsNonsenseStaysAsItWas) {
    ScriptedPlayer one("one", withSong("Playing", "", "First"));
    start();
    ASSERT_TRUE(shows("1. First - Winamp"));
    const auto window = player->WinampWindow();
    const QString interface = "org.mpris.MediaPlayer2.Player";
    one.emitChange({});
    one.emitChange({interface});
    one.emitChange({7, 8, 9});
    one.emitChange({interface, "PlaybackStatus", "Paused"});
    one.emitChange({"net.example.Other", QVariantMap{{"PlaybackStatus", "Paused"}}, QStringList()});
    one.emitChange({interface, QVariantMap{{"PlaybackStatus", 7}}, QStringList()});
    one.emitChange({interface, QVariantMap{{"PlaybackStatus", "Dancing"}}, QStringList()});
    one.emitChange({interface, QVariantMap{{"PlaybackStatus", QVariantMap()}}, QStringList()});
    one.emitChange(
        {interface, QVariantMap{{"", 7}, {"CanPlay", "no"}}, QStringList{"", "Nothing"}});
    ScriptedPlayer two("two", withSong("Playing", "", "Second"));
    ASSERT_TRUE(shows("1. Second - Winamp"));
    EXPECT_EQ(player->WindowTextOf(window), "1. First - Winamp");
}

TEST_F(MisbehavingPlayer, WithMetadataOfAWrongTypeHasNoTitle) {
    ScriptedPlayer one("one", withSong("Playing", "", "First"));
    start();
    for (const QVariant& nonsense :
         {QVariant("text"), QVariant(7), QVariant(QStringList{"xesam:title", "Song"}),
          QVariant(QVariantList{1, "two"}), QVariant(QByteArray("bytes")),
          QVariant::fromValue(QDBusVariant(7))}) {
        one.changeTitle("First");
        ASSERT_TRUE(shows("1. First - Winamp"));
        one.change({{"Metadata", nonsense}});
        EXPECT_TRUE(shows("")) << nonsense.typeName();
    }
}

TEST_F(MisbehavingPlayer, ThatInvalidatesInARowIsAskedUntilItIsKnown) {
    ScriptedPlayer one("one", withSong("Playing", "", "First"));
    start();
    ASSERT_TRUE(shows("1. First - Winamp"));
    for (int i = 0; i < 1000; ++i)
        one.changeSilently(withSong("Playing", "", QString::number(i)));
    EXPECT_TRUE(shows("1. 999 - Winamp"));
}

}  // namespace

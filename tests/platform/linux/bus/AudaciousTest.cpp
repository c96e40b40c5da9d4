#include "tests/platform/linux/bus/PlayerBus.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>
#include <utility>

namespace {

/// A chunk of a RIFF file; what it holds has an even number of bytes.
std::string chunk(std::string_view name, const std::string& content) {
    const auto size = static_cast<std::uint32_t>(content.size());
    std::string whole(name);
    for (int shift = 0; shift < 32; shift += 8)
        whole += static_cast<char>((size >> shift) & 0xFFU);
    return whole + content;
}

/// A minute of silence, with 8000 samples of one byte in a second.
std::string silence(const std::string& artist, const std::string& title) {
    using namespace std::string_literals;
    const std::string format = "\x01\0\x01\0\x40\x1F\0\0\x40\x1F\0\0\x01\0\x08\0"s;
    const auto text = [](const std::string& letters) {
        return letters + std::string(2 - letters.size() % 2, '\0');
    };
    const std::string tags = "INFO" + chunk("IART", text(artist)) + chunk("INAM", text(title));
    return chunk("RIFF", "WAVE" + chunk("fmt ", format) + chunk("LIST", tags) +
                             chunk("data", std::string(60 * 8000, '\x80')));
}

/// A real player, without windows, in a home of its own and with nothing to be heard.
class Audacious : public PlayerBus {
protected:
    Audacious() {
        std::ofstream(home.path() / "one.wav") << silence("Ann", "First");
        std::ofstream(home.path() / "two.wav") << silence("", "Second");
    }

    void startAudacious() {
        sound = Child({"pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no",
                       "--exit-idle-time=-1", "--log-target=file:/dev/null", "-L",
                       "module-native-protocol-unix auth-anonymous=1 socket=" + in("sound"), "-L",
                       "module-null-sink"});
        ASSERT_TRUE(becomesTrue([&] { return std::filesystem::exists(in("sound")); }));
        audacious = Child({"audacious", "--headless", in("one.wav"), in("two.wav")});
    }

    /// It shows `expected` and is in the middle of the song: while it opens one, it leaves out what
    /// it is told to do.
    [[nodiscard]] testing::AssertionResult plays(const std::string& expected) const {
        if (testing::AssertionResult shown = shows(expected); !shown) return shown;
        long position = 0;
        const bool moves = becomesTrue([&] {
            const long before = std::exchange(position, positionOfSong());
            return before > 0 && position > before;
        });
        if (moves) return testing::AssertionSuccess();
        return testing::AssertionFailure() << "the song stands at " << position << " us";
    }

    /// In microseconds, as audacious tells it four times a second; 0 while it opens a song.
    [[nodiscard]] static long positionOfSong() {
        Child asking({"dbus-send", "--print-reply=literal",
                      "--dest=org.mpris.MediaPlayer2.audacious", "/org/mpris/MediaPlayer2",
                      "org.freedesktop.DBus.Properties.Get", "string:org.mpris.MediaPlayer2.Player",
                      "string:Position"});
        const std::string answer = asking.readLine();
        return std::strtol(answer.substr(answer.rfind(' ') + 1).c_str(), nullptr, 10);
    }

    [[nodiscard]] std::string in(const char* name) const { return home.path() / name; }

    TemporaryFolder home;
    Variable homeFolder{"HOME", home.path()};
    Variable runtime{"XDG_RUNTIME_DIR", home.path()};
    Variable configuration{"XDG_CONFIG_HOME", in("config")};
    Variable data{"XDG_DATA_HOME", in("data")};
    Variable cache{"XDG_CACHE_HOME", in("cache")};
    Variable server{"PULSE_SERVER", "unix:" + in("sound")};
    Variable display{"DISPLAY", std::nullopt};
    Variable wayland{"WAYLAND_DISPLAY", std::nullopt};
    Child sound;
    Child audacious;
};

TEST_F(Audacious, IsFollowedAndObeysFromItsStartToItsEnd) {
    start();
    startAudacious();
    ASSERT_TRUE(plays("1. Ann - First - Winamp"));
    command(40046);
    EXPECT_TRUE(shows("1. Ann - First - Winamp [Paused]"));
    command(40046);
    EXPECT_TRUE(plays("1. Ann - First - Winamp"));
    command(40048);
    EXPECT_TRUE(plays("1. Second - Winamp"));
    command(40044);
    EXPECT_TRUE(plays("1. Ann - First - Winamp"));
    command(40046);
    EXPECT_TRUE(shows("1. Ann - First - Winamp [Paused]"));
    command(40045);
    EXPECT_TRUE(plays("1. Ann - First - Winamp"));
    command(40047);
    EXPECT_TRUE(shows(""));
    command(40045);
    EXPECT_TRUE(plays("1. Ann - First - Winamp"));
    audacious = Child();
    EXPECT_TRUE(comesTrue([&] { return player->WinampWindow() == 0; }));
}

}  // namespace

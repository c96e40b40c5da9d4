#include "tests/conversation/Talk.h"
#include "tests/conversation/thrown.h"
#include "tests/support/Recording.h"

#include <tuple>

namespace {

using testing::Combine;
using testing::Values;
using testing::ValuesIn;

/// What is on while a recording is played.
struct Features {
    const char* name;
    std::vector<std::string> on;
    std::vector<std::string> off;
    bool rancolor = false;
};

void PrintTo(const Features& features, std::ostream* out) { *out << features.name; }

/// Exceptions cost a thousand times what a test of a value does, so they are for what is abandoned
/// and not for what is just not there.
class Throws : public Talk {
protected:
    /// How many exceptions one read costs.
    std::size_t thrownBy(const RecordedRead& read) {
        const std::size_t before = thrown();
        (read.fromClient ? spine.client() : spine.server()).arrive(read.bytes);
        return thrown() - before;
    }
};

TEST_F(Throws, AreCounted) {
    const std::size_t before = thrown();
    attempt([] { throw Failure("one"); });
    attempt([] { (void)need(std::optional<int>()); });
    EXPECT_EQ(thrown() - before, 2U);
}

TEST_F(Throws, AreNotMadeByAKeepAlive) {
    EXPECT_EQ(thrownBy({true, "PNG\r\n"}), 0U);
    EXPECT_EQ(thrownBy({false, "QNG 50\r\n"}), 0U);
}

TEST_F(Throws, AreNotMadeByAPlayerThatPlaysNothing) {
    for (const std::string title : {"", "Winamp 2.91", "ab - Winamp"}) {
        spine.facilities.player.title = title;
        EXPECT_EQ(thrownBy({true, clientText("<ws>")}), 0U) << title;
    }
}

TEST_F(Throws, AreNotMadeByAPeerThatIsGone) {
    spine.server().sendFails = true;
    EXPECT_EQ(thrownBy({true, clientText("hello")}), 0U);
}

TEST_F(Throws, AreMadeByACommandWhoseAnswerCannotBeSent) {
    set("preventtypo", "True");
    spine.client().sendFails = true;
    EXPECT_EQ(thrownBy({true, clientText("!hello")}), 1U);
}

class PlayedThrows : public Throws,
                     public testing::WithParamInterface<std::tuple<std::string, Features>> {
protected:
    PlayedThrows() {
        const Features& features = std::get<Features>(GetParam());
        for (const std::string& key : features.on)
            set(key, "True");
        for (const std::string& key : features.off)
            set(key, "False");
        spine.host.values.rancolorOn = features.rancolor;
    }
    /// A second text behind the first takes the whole chunk away from the filter.
    static bool holdsTwoTexts(const RecordedRead& read) {
        const std::string type = "\r\nContent-Type: text/plain";
        return read.fromClient && read.bytes.find(type) != read.bytes.rfind(type);
    }
};

TEST_P(PlayedThrows, AreMadeByNothingButAChunkOfTwoTexts) {
    for (const RecordedRead& read : readRecording(std::get<std::string>(GetParam())))
        EXPECT_EQ(thrownBy(read), holdsTwoTexts(read) ? 1U : 0U) << escaped(read.bytes);
}

INSTANTIATE_TEST_SUITE_P(Real, PlayedThrows,
                         Combine(ValuesIn(recordingNames()),
                                 Values(Features{"nothing", {}, {}},
                                        Features{"everything",
                                                 {"useristyping", "alertoffline", "alertopenwindow",
                                                  "alertclosewindow", "alertjoinwindow",
                                                  "timestamp", "preventtypo", "lastthing"},
                                                 {}},
                                        Features{"no constants", {}, {"constants"}},
                                        Features{"random colours", {}, {}, true})));

}  // namespace

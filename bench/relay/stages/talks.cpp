#include "bench/relay/stages/Stage.h"
#include "bench/relay/stages/Talker.h"
#include "bench/relay/stages/checks.h"
#include "bench/relay/system/BenchError.h"
#include "bench/relay/system/processFacts.h"
#include "tests/support/messages.h"
#include "tests/support/storedSettings.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using enum Figure;
using traffic::Talk;
using traffic::Turn;

using Clock = std::chrono::steady_clock;

/// A percentile of a few values says nothing.
constexpr std::size_t fewestTrips = 30;

/// The program learns from the server's echo who talks with whom.
void introduce(const StageRun& /*run*/, int socket) {
    echo(socket, "USR 8 OK " + std::string(traffic::client) + " Ann%20Lee\r\n");
    echo(socket, "JOI " + std::string(traffic::contact) + " Bob\r\n");
}

/// Where a talk leaves nothing to be seen of the filters, another connection shows that they are
/// there.
void readsAlong(const StageRun& run, int /*socket*/) {
    const Descriptor socket = run.relay.open();
    introduce(run, socket.get());
    (void)Talker(run, socket.get(), Talk::TextWithTokens, hasNoToken).takeTurn();
}

void switchColoursOn(const StageRun& /*run*/, int socket) {
    sendAll(socket, clientText("!rancolor"));
    std::string buffer(traffic::blockSize, '\0');
    if (receiveCommands(socket, 1, buffer).find("TypingUserx") == std::string_view::npos) {
        throw BenchError("the chat command for random colours was not carried out");
    }
}

/// The contact joins another conversation, where the last text is repeated.
void repeatsLastWords(const StageRun& run, const Turn& last) {
    const Descriptor socket = run.relay.open();
    const std::string joins = "JOI " + std::string(traffic::contact) + " Bob\r\n";
    sendAll(socket.get(), joins);
    std::string buffer(traffic::blockSize, '\0');
    const std::string told(receiveCommands(socket.get(), 1, buffer));
    if (told.find("Last thing " + std::string(traffic::contact) + " said:\r\n\r\n" +
                  textOf(last.fromServer.front())) == std::string::npos) {
        throw BenchError("the last words of the contact were not repeated");
    }
}

/// A talk, where its times go, and what the program under test is to make of it.
struct Dialogue {
    std::string name;
    Talk talk = Talk::Text;
    Figure median = TextMedian0;
    std::optional<Figure> tail = {};
    std::optional<Figure> processor = {};
    /// How many other connections are open and silent.
    std::size_t silent = 0;
    /// What it does to the program under test cannot be done a second time.
    bool isOnce = false;
    Settings settings = usualSettings();
    Check check = arrivesUnchanged;
    /// What goes before and comes after it, for a program that rewrites.
    std::function<void(const StageRun&, int socket)> before = readsAlong;
    std::function<void(const StageRun&, const Turn& last)> after = [](const StageRun&,
                                                                      const Turn&) {};
};

/// The usual ones, but for the last words: the first text changes the store, which is then looked
/// at more closely for a while than one that rests.
Settings withoutLastWords() {
    Settings settings = usualSettings();
    std::erase_if(settings, [](const auto& setting) { return setting.first.first != "Options"; });
    return settings;
}

/// Both, and what they both have as the first has it.
Settings with(Settings first, Settings second) {
    first.merge(second);
    return first;
}

void measureTrips(const StageRun& run, const Dialogue& dialogue) {
    const auto others = run.relay.openMany(dialogue.silent);
    const Descriptor socket = run.relay.open();
    const bool rewrites = run.relay.rewrites();
    if (rewrites) dialogue.before(run, socket.get());
    Talker talker(run, socket.get(), dialogue.talk, rewrites ? dialogue.check : arrivesUnchanged);
    for (const auto end = Clock::now() + run.plan.warmUpTime; Clock::now() < end;)
        (void)talker.takeTurn();

    const bool countsProcessor = dialogue.processor && run.relay.hasProcess();
    const auto before = countsProcessor ? processorNanoseconds(run.relay.processId()) : 0;
    std::vector<double> times;
    const auto deadline = Clock::now() + run.plan.tripTime;
    while (times.size() < fewestTrips ||
           (times.size() < run.plan.trips && Clock::now() < deadline)) {
        times.push_back(talker.takeTurn());
    }
    if (countsProcessor) {
        const auto used = processorNanoseconds(run.relay.processId()) - before;
        run.record(*dialogue.processor,
                   static_cast<double>(used) / 1000 / static_cast<double>(times.size()));
    }
    run.record(dialogue.median, percentile(times, 0.5));
    if (dialogue.tail) run.record(*dialogue.tail, percentile(times, 0.99));
    if (rewrites) dialogue.after(run, talker.last());
}

/// Each sign-in over a connection of its own, whose opening is not counted.
void measureSignIns(const StageRun& run) {
    const Check check = run.relay.rewrites() ? signsInAsBusy : arrivesUnchanged;
    std::vector<double> times(run.plan.signIns);
    for (double& time : times) {
        const Descriptor socket = run.relay.open();
        Talker talker(run, socket.get(), Talk::SignIn, check);
        for (std::size_t turn = 0; turn < talker.length(); ++turn)
            time += talker.takeTurn();
    }
    run.record(SignInMedian, percentile(times, 0.5));
}

std::vector<Dialogue> allDialogues() {
    const auto unknown = [](Figure median, Figure tail, std::optional<Figure> processor,
                            std::size_t silent) {
        return Dialogue{.name = "unknown command, K=" + std::to_string(silent),
                        .talk = Talk::UnknownCommand,
                        .median = median,
                        .tail = tail,
                        .processor = processor,
                        .silent = silent};
    };
    const auto text = [](Figure median, std::size_t silent) {
        return Dialogue{
            .name = "text, K=" + std::to_string(silent), .median = median, .silent = silent};
    };
    Dialogue alone = text(TextMedian0, 0);
    alone.tail = TextTail0;
    alone.processor = TextProcessor0;
    return {
        {.name = "PNG/QNG", .talk = Talk::Ping, .median = PingMedian},
        alone,
        text(TextMedian50, 50),
        text(TextMedian1000, 1000),
        {.name = "text in 2 writes",
         .talk = Talk::TextInTwo,
         .median = TextInTwoMedian,
         .tail = TextInTwoTail,
         .check = hasLengthOfFirstPart},
        {.name = "text with every token",
         .talk = Talk::TextWithTokens,
         .median = TokensMedian,
         .check = hasNoToken,
         .before = introduce},
        {.name = "text in random colours",
         .median = ColoursMedian,
         .isOnce = true,
         .check = hasNewColour(),
         .before = switchColoursOn},
        {.name = "text and stamped text",
         .median = StampMedian,
         .settings =
             with(storedOptions({{"timestamp", "True"}, {"tsprefix", "["}, {"tspostfix", "]"}}),
                  usualSettings()),
         .check = hasStamp,
         .before = [](const StageRun&, int) {}},
        {.name = "text, the store just written",
         .median = FreshStoreMedian,
         .isOnce = true,
         .settings = withoutLastWords()},
        {.name = "text and new last words",
         .talk = Talk::NewTexts,
         .median = LastWordsMedian,
         .isOnce = true,
         .settings = with(storedOptions({{"lastthing", "True"}}), withoutLastWords()),
         .after = repeatsLastWords},
        {.name = "typing notices",
         .talk = Talk::Typing,
         .median = TypingMedian,
         .settings = with(storedOptions({{"useristyping", "True"}}), usualSettings()),
         .check = hidesTyping},
        unknown(UnknownMedian0, UnknownTail0, UnknownProcessor0, 0),
        unknown(UnknownMedian50, UnknownTail50, {}, 50),
        unknown(UnknownMedian1000, UnknownTail1000, UnknownProcessor1000, 1000),
        {.name = "unknown command in 2 writes",
         .talk = Talk::UnknownCommandInTwo,
         .median = UnknownInTwoMedian,
         .tail = UnknownInTwoTail},
    };
}

}  // namespace

std::vector<Stage> talkStages(const Plan& plan) {
    std::vector<Stage> stages;
    for (const Dialogue& dialogue : allDialogues()) {
        std::vector<Figure> figures{dialogue.median};
        if (dialogue.tail) figures.push_back(*dialogue.tail);
        if (dialogue.processor) figures.push_back(*dialogue.processor);
        // A thousand connections take longer to open than the trips.
        const int rounds = dialogue.isOnce ? 1 : dialogue.silent > 100 ? 2 : plan.rounds;
        stages.push_back(
            {.name = dialogue.name,
             .figures = std::move(figures),
             .measure = [dialogue](const StageRun& run) { measureTrips(run, dialogue); },
             .repetitions = plan.repetitions,
             .rounds = rounds,
             .settings = dialogue.settings});
    }
    stages.push_back(
        {.name = "recorded sign-in",
         .figures = {SignInMedian},
         .measure = measureSignIns,
         .repetitions = plan.repetitions,
         .rounds = plan.rounds,
         .settings = with(storedOptions({{"initialStatus", "Busy"}}), usualSettings())});
    return stages;
}

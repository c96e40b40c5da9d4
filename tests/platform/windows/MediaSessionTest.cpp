#include "platform/windows/MediaSession.h"

#include "platform/windows/wideText.h"
#include "tests/support/comesTrue.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include <winstring.h>

using namespace mediaControl;

namespace {

/// An object of the system's, as far as each of them is one. Objects are owned by the test, so the
/// count of their references only shows that all were given back.
template <typename Interface>
struct Fake : Interface {
    ULONG references = 0;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID /*wanted*/, void** found) override {
        *found = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    HRESULT STDMETHODCALLTYPE GetIids(ULONG* /*count*/, IID** /*ids*/) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetRuntimeClassName(HSTRING* /*name*/) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTrustLevel(TrustLevel* /*level*/) override { return E_NOTIMPL; }

protected:
    ~Fake() = default;
};

template <typename Object, typename Interface>
HRESULT give(Object& object, Interface** value) {
    object.AddRef();
    *value = &object;
    return S_OK;
}

HRESULT giveText(const std::string& text, HSTRING* value) {
    const std::wstring wide = wideText::fromUtf8(text);
    return WindowsCreateString(wide.data(), static_cast<UINT32>(wide.size()), value);
}

/// Who is called back, on a thread of the system's.
class Listeners {
public:
    ~Listeners() {
        for (const auto& [token, callback] : all)
            callback->Release();
    }

    HRESULT add(Callback* callback, EventRegistrationToken* token) {
        callback->AddRef();
        token->value = ++last;
        all[last] = callback;
        return S_OK;
    }
    HRESULT remove(EventRegistrationToken token) {
        const auto found = all.find(token.value);
        if (found == all.end()) return E_INVALIDARG;
        found->second->Release();
        all.erase(found);
        return S_OK;
    }
    [[nodiscard]] std::size_t count() const { return all.size(); }
    void call() const {
        std::thread([this] {
            for (const auto& [token, callback] : all)
                callback->Invoke(nullptr, nullptr);
        }).join();
    }

private:
    INT64 last = 0;
    std::map<INT64, Callback*> all;
};

/// It is over when the test says so.
template <typename Result>
struct FakeOperation final : Fake<Operation<Result>> {
    Result result{};
    bool isOver = false;
    Listeners listeners;

    HRESULT STDMETHODCALLTYPE put_Completed(Callback* callback) override {
        EventRegistrationToken token{};
        return listeners.add(callback, &token);
    }
    HRESULT STDMETHODCALLTYPE get_Completed(Callback** /*callback*/) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetResults(Result* value) override {
        if (!isOver) return E_PENDING;
        if constexpr (std::is_pointer_v<Result>) {
            result->AddRef();
        }
        *value = result;
        return S_OK;
    }
    void end() {
        isOver = true;
        listeners.call();
    }
};

struct FakeProperties final : Fake<MediaProperties> {
    std::string artist;
    std::string title;

    HRESULT STDMETHODCALLTYPE get_Title(HSTRING* value) override { return giveText(title, value); }
    HRESULT STDMETHODCALLTYPE get_Subtitle(HSTRING* /*value*/) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_AlbumArtist(HSTRING* /*value*/) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_Artist(HSTRING* value) override {
        return giveText(artist, value);
    }
};

struct FakePlayback final : Fake<PlaybackInfo> {
    PlaybackStatus status = Stopped;

    HRESULT STDMETHODCALLTYPE get_Controls(IInspectable** /*value*/) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_PlaybackStatus(PlaybackStatus* value) override {
        *value = status;
        return S_OK;
    }
};

struct FakeSession final : Fake<Session> {
    FakePlayback playback;
    FakeProperties properties;
    Listeners playbackListeners;
    Listeners propertiesListeners;
    std::vector<std::unique_ptr<FakeOperation<MediaProperties*>>> questions;
    std::vector<std::string> commands;

    FakeSession(PlaybackStatus status, const std::string& artist, const std::string& title) {
        playback.status = status;
        properties.artist = artist;
        properties.title = title;
    }

    /// All questions about the song are answered.
    void answer() {
        for (const auto& question : questions)
            if (!question->isOver) question->end();
    }
    void play(const std::string& title) {
        properties.title = title;
        propertiesListeners.call();
    }
    void become(PlaybackStatus status) {
        playback.status = status;
        playbackListeners.call();
    }
    [[nodiscard]] bool isLeft() const {
        const auto isGivenBack = [](const auto& question) { return question->references == 0; };
        return references == 0 && playback.references == 0 && properties.references == 0 &&
               std::ranges::all_of(questions, isGivenBack) && playbackListeners.count() == 0 &&
               propertiesListeners.count() == 0;
    }

    HRESULT STDMETHODCALLTYPE get_SourceAppUserModelId(HSTRING* /*value*/) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE
    TryGetMediaPropertiesAsync(Operation<MediaProperties*>** operation) override {
        questions.push_back(std::make_unique<FakeOperation<MediaProperties*>>());
        questions.back()->result = &properties;
        return give(*questions.back(), operation);
    }
    HRESULT STDMETHODCALLTYPE GetTimelineProperties(IInspectable** /*value*/) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetPlaybackInfo(PlaybackInfo** value) override {
        return give(playback, value);
    }
    HRESULT STDMETHODCALLTYPE TryPlayAsync(Attempt** /*operation*/) override {
        return command("play");
    }
    HRESULT STDMETHODCALLTYPE TryPauseAsync(Attempt** /*operation*/) override {
        return command("pause alone");
    }
    HRESULT STDMETHODCALLTYPE TryStopAsync(Attempt** /*operation*/) override {
        return command("stop");
    }
    HRESULT STDMETHODCALLTYPE TryRecordAsync(Attempt** /*operation*/) override {
        return command("record");
    }
    HRESULT STDMETHODCALLTYPE TryFastForwardAsync(Attempt** /*operation*/) override {
        return command("fast forward");
    }
    HRESULT STDMETHODCALLTYPE TryRewindAsync(Attempt** /*operation*/) override {
        return command("rewind");
    }
    HRESULT STDMETHODCALLTYPE TrySkipNextAsync(Attempt** /*operation*/) override {
        return command("next");
    }
    HRESULT STDMETHODCALLTYPE TrySkipPreviousAsync(Attempt** /*operation*/) override {
        return command("previous");
    }
    HRESULT STDMETHODCALLTYPE TryChangeChannelUpAsync(Attempt** /*operation*/) override {
        return command("channel up");
    }
    HRESULT STDMETHODCALLTYPE TryChangeChannelDownAsync(Attempt** /*operation*/) override {
        return command("channel down");
    }
    HRESULT STDMETHODCALLTYPE TryTogglePlayPauseAsync(Attempt** /*operation*/) override {
        return command("pause");
    }
    HRESULT STDMETHODCALLTYPE TryChangeAutoRepeatModeAsync(int /*mode*/,
                                                           Attempt** /*operation*/) override {
        return command("repeat");
    }
    HRESULT STDMETHODCALLTYPE TryChangePlaybackRateAsync(double /*rate*/,
                                                         Attempt** /*operation*/) override {
        return command("rate");
    }
    HRESULT STDMETHODCALLTYPE TryChangeShuffleActiveAsync(boolean /*active*/,
                                                          Attempt** /*operation*/) override {
        return command("shuffle");
    }
    HRESULT STDMETHODCALLTYPE TryChangePlaybackPositionAsync(INT64 /*position*/,
                                                             Attempt** /*operation*/) override {
        return command("position");
    }
    HRESULT STDMETHODCALLTYPE add_TimelinePropertiesChanged(
        Callback* /*callback*/, EventRegistrationToken* /*token*/) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE
    remove_TimelinePropertiesChanged(EventRegistrationToken /*token*/) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE add_PlaybackInfoChanged(Callback* callback,
                                                      EventRegistrationToken* token) override {
        return playbackListeners.add(callback, token);
    }
    HRESULT STDMETHODCALLTYPE remove_PlaybackInfoChanged(EventRegistrationToken token) override {
        return playbackListeners.remove(token);
    }
    HRESULT STDMETHODCALLTYPE add_MediaPropertiesChanged(Callback* callback,
                                                         EventRegistrationToken* token) override {
        return propertiesListeners.add(callback, token);
    }
    HRESULT STDMETHODCALLTYPE remove_MediaPropertiesChanged(EventRegistrationToken token) override {
        return propertiesListeners.remove(token);
    }

private:
    HRESULT command(const char* name) {
        commands.emplace_back(name);
        return E_NOTIMPL;
    }
};

struct FakeManager final : Fake<Manager> {
    FakeSession* session = nullptr;
    Listeners listeners;

    HRESULT STDMETHODCALLTYPE GetCurrentSession(Session** value) override {
        *value = nullptr;
        return session == nullptr ? S_OK : give(*session, value);
    }
    HRESULT STDMETHODCALLTYPE GetSessions(IInspectable** /*value*/) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE add_CurrentSessionChanged(Callback* callback,
                                                        EventRegistrationToken* token) override {
        return listeners.add(callback, token);
    }
    HRESULT STDMETHODCALLTYPE remove_CurrentSessionChanged(EventRegistrationToken token) override {
        return listeners.remove(token);
    }
};

struct FakeStatics final : Fake<Statics> {
    FakeManager manager;
    FakeOperation<Manager*> request;

    HRESULT STDMETHODCALLTYPE RequestAsync(Operation<Manager*>** operation) override {
        request.result = &manager;
        return give(request, operation);
    }
};

class SystemSession : public testing::Test {
protected:
    ~SystemSession() override {
        player.reset();
        EXPECT_EQ(system.references, 0U);
        EXPECT_EQ(system.request.references, 0U);
        EXPECT_EQ(system.manager.references, 0U);
        EXPECT_EQ(system.manager.listeners.count(), 0U);
        EXPECT_TRUE(first.isLeft());
        EXPECT_TRUE(second.isLeft());
    }

    void start(FakeSession* session) {
        system.manager.session = session;
        player->changed = [this] { ++changes; };
        system.request.end();
    }
    void takeOver(FakeSession* session) {
        system.manager.session = session;
        system.manager.listeners.call();
    }
    [[nodiscard]] std::string title() const { return player->titleOf(player->window()); }
    [[nodiscard]] testing::AssertionResult becomes(const std::string& expected) {
        const bool isSo = comesTrue([&] {
            for (FakeSession* const session : {&first, &second})
                session->answer();
            return title() == expected;
        });
        if (isSo) return testing::AssertionSuccess();
        return testing::AssertionFailure() << "the title is " << title();
    }

    FakeStatics system;
    FakeSession first{Playing, "Ann", "One"};
    FakeSession second{Paused, "Bob", "Two"};
    std::unique_ptr<MediaSession> player = std::make_unique<MediaSession>([this] {
        Reference<Statics> reached;
        give(system, reached.out());
        return reached;
    });
    int changes = 0;
};

TEST_F(SystemSession, IsNoPlayerBeforeTheSystemHasAnswered) {
    EXPECT_EQ(player->window(), 0U);
    player->command(1, 40045);
    EXPECT_EQ(player->titleOf(1), "");
}

TEST_F(SystemSession, IsNoPlayerWhereNothingPlays) {
    start(nullptr);
    EXPECT_TRUE(comesTrue([this] { return system.manager.listeners.count() == 1; }));
    EXPECT_EQ(player->window(), 0U);
}

TEST_F(SystemSession, HasItsSongInATitleOfWinampsForm) {
    start(&first);
    EXPECT_TRUE(becomes("1. Ann - One - Winamp"));
    EXPECT_GT(changes, 0);
}

TEST_F(SystemSession, IsAPlayerWithoutATitleBeforeItsSongIsKnown) {
    start(&first);
    EXPECT_TRUE(comesTrue([this] { return player->window() != 0; }));
    EXPECT_EQ(title(), "");
}

TEST_F(SystemSession, KeepsTheSongWhoseLettersNoCodePageHas) {
    first.properties.title = "\xD0\x9C\xD0\xB8\xD1\x80 \xE2\x82\xAC";
    start(&first);
    EXPECT_TRUE(becomes("1. Ann - \xD0\x9C\xD0\xB8\xD1\x80 \xE2\x82\xAC - Winamp"));
}

TEST_F(SystemSession, SaysWhenItPausesAndGoesOn) {
    start(&first);
    ASSERT_TRUE(becomes("1. Ann - One - Winamp"));
    first.become(Paused);
    EXPECT_TRUE(becomes("1. Ann - One - Winamp [Paused]"));
    first.become(Changing);
    first.become(Playing);
    EXPECT_TRUE(becomes("1. Ann - One - Winamp"));
}

TEST_F(SystemSession, SaysWhenItPlaysSomethingElse) {
    start(&first);
    ASSERT_TRUE(becomes("1. Ann - One - Winamp"));
    const auto before = changes;
    first.play("Other");
    EXPECT_TRUE(becomes("1. Ann - Other - Winamp"));
    EXPECT_GT(changes, before);
}

TEST_F(SystemSession, ShowsTheLastOfSongsThatFollowEachOtherFast) {
    start(&first);
    for (const char* const song : {"Two", "Three", "Four"})
        first.play(song);
    EXPECT_TRUE(becomes("1. Ann - Four - Winamp"));
}

TEST_F(SystemSession, GivesWayToTheOneThatTheSystemTakesNext) {
    start(&first);
    ASSERT_TRUE(becomes("1. Ann - One - Winamp"));
    const auto before = player->window();
    takeOver(&second);
    EXPECT_TRUE(becomes("1. Bob - Two - Winamp [Paused]"));
    EXPECT_NE(player->window(), before);
    EXPECT_TRUE(first.isLeft());
    takeOver(nullptr);
    EXPECT_TRUE(comesTrue([this] { return player->window() == 0; }));
}

TEST_F(SystemSession, TakesTheCommandsOfWinamp) {
    start(&first);
    ASSERT_TRUE(becomes("1. Ann - One - Winamp"));
    for (const int number : {40044, 40045, 40046, 40047, 40048, 40049})
        player->command(player->window(), number);
    EXPECT_EQ(first.commands,
              (std::vector<std::string>{"previous", "play", "pause", "stop", "next"}));
}

TEST_F(SystemSession, IsNotStartedByAPauseWhenItIsStopped) {
    first.playback.status = Stopped;
    start(&first);
    ASSERT_TRUE(becomes("1. Ann - One - Winamp"));
    player->command(player->window(), 40046);
    EXPECT_TRUE(first.commands.empty());
}

TEST_F(SystemSession, MayCallBackWhenNobodyListensAnyMore) {
    start(&first);
    ASSERT_TRUE(becomes("1. Ann - One - Winamp"));
    first.play("Other");
    ASSERT_TRUE(comesTrue([this] { return first.questions.size() > 1; }));
    player.reset();
    const int before = changes;
    first.answer();
    QCoreApplication::processEvents();
    EXPECT_EQ(changes, before);
}

TEST(SessionsOfTheSystem, MayBeMissing) {
    MediaSession player([] { return Reference<Statics>(); });
    EXPECT_EQ(player.window(), 0U);
    // Whether this system has any or not.
    MediaSession real;
    QCoreApplication::processEvents();
    EXPECT_EQ(real.titleOf(0), "");
}

}  // namespace

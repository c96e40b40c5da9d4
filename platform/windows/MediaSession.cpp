#include "platform/windows/MediaSession.h"

#include "platform/shared/runEvent.h"
#include "platform/windows/wideText.h"

#include <roapi.h>
#include <winstring.h>

using namespace mediaControl;

namespace {

constexpr UINT onManagerReady = WM_APP;
constexpr UINT onSessionChanged = WM_APP + 1;
constexpr UINT onPlaybackChanged = WM_APP + 2;
constexpr UINT onPropertiesChanged = WM_APP + 3;
constexpr UINT onPropertiesReady = WM_APP + 4;

constexpr IID unknown{0x00000000, 0x0000, 0x0000, {0xc0, 0, 0, 0, 0, 0, 0, 0x46}};
/// The interface of an object that may be called on any thread.
constexpr IID agile{0x94ea2b94, 0xe9cc, 0x49e0, {0xc0, 0xff, 0xee, 0x64, 0xca, 0x8f, 0x5b, 0x90}};

/// Takes the text over.
std::string taken(HSTRING text) {
    UINT32 size = 0;
    const wchar_t* const letters = WindowsGetStringRawBuffer(text, &size);
    std::string utf8 = wideText::toUtf8({letters, size});
    WindowsDeleteString(text);
    return utf8;
}

/// The player's status; nothing while it is between two.
std::optional<PlayerStatus> statusOf(PlaybackStatus status) {
    switch (status) {
        case Changing: return std::nullopt;
        case Playing: return PlayerStatus::Playing;
        case Paused: return PlayerStatus::Paused;
        default: return PlayerStatus::Stopped;
    }
}

}  // namespace

/// Turns a call on whatever thread into a message.
class MediaSession::Notice final : public Callback {
public:
    Notice(const IID& kind, std::shared_ptr<const std::atomic<HWND>> receiver, UINT message)
        : kind(kind), receiver(std::move(receiver)), message(message) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** found) override {
        const bool isKnown = wanted == kind || wanted == unknown || wanted == agile;
        *found = isKnown ? this : nullptr;
        if (!isKnown) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references;
        if (left == 0) delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE Invoke(void* /*sender*/, void* /*what*/) override {
        if (const HWND window = *receiver) PostMessageW(window, message, 0, 0);
        return S_OK;
    }

private:
    ~Notice() = default;

    const IID kind;
    const std::shared_ptr<const std::atomic<HWND>> receiver;
    const UINT message;
    std::atomic<ULONG> references{1};
};

Reference<Statics> MediaSession::ofSystem() {
    const std::wstring_view name(managerClass);
    Reference<Statics> found;
    HSTRING text = nullptr;
    if (FAILED(WindowsCreateString(name.data(), static_cast<UINT32>(name.size()), &text))) {
        return found;
    }
    void* factory = nullptr;
    if (SUCCEEDED(RoGetActivationFactory(text, managerStatics, &factory))) {
        *found.out() = static_cast<Statics*>(factory);
    }
    WindowsDeleteString(text);
    return found;
}

MediaSession::MediaSession(const Activate& activate)
    : HiddenWindow(Kind::MessagesOnly),
      receiver(std::make_shared<std::atomic<HWND>>(handle())),
      apartment(RoInitialize(RO_INIT_SINGLETHREADED)) {
    const Reference<Statics> sessions = activate();
    if (!sessions || FAILED(sessions->RequestAsync(request.out())) || !request) return;
    request->put_Completed(notice(managerReady, onManagerReady).get());
}

MediaSession::~MediaSession() {
    *receiver = nullptr;
    leaveSession();
    if (manager) manager->remove_CurrentSessionChanged(sessionToken);
    manager.reset();
    request.reset();
    if (SUCCEEDED(apartment)) RoUninitialize();
}

void MediaSession::command(Window window, int number) {
    const auto command = players.commandOf(window, number);
    if (!command || !session) return;
    Reference<Attempt> attempt;
    switch (*command) {
        case PlayerCommand::Previous: session->TrySkipPreviousAsync(attempt.out()); break;
        case PlayerCommand::Play: session->TryPlayAsync(attempt.out()); break;
        case PlayerCommand::PlayPause: session->TryTogglePlayPauseAsync(attempt.out()); break;
        case PlayerCommand::Stop: session->TryStopAsync(attempt.out()); break;
        case PlayerCommand::Next: session->TrySkipNextAsync(attempt.out()); break;
    }
}

LRESULT MediaSession::onMessage(UINT message, WPARAM first, LPARAM second) {
    if (message < onManagerReady || message > onPropertiesReady) {
        return ignore(message, first, second);
    }
    runEvent([&] {
        switch (message) {
            case onManagerReady: takeManager(); break;
            case onSessionChanged: takeSession(); break;
            case onPlaybackChanged: readStatus(); break;
            case onPropertiesChanged: askForSong(); break;
            default: readSong(); break;
        }
        if (players.hasChanged()) changed();
    });
    return 0;
}

void MediaSession::takeManager() {
    if (!request || FAILED(request->GetResults(manager.out())) || !manager) return;
    request.reset();
    manager->add_CurrentSessionChanged(notice(sessionChanged, onSessionChanged).get(),
                                       &sessionToken);
    takeSession();
}

void MediaSession::takeSession() {
    leaveSession();
    if (!manager || FAILED(manager->GetCurrentSession(session.out())) || !session) return;
    session->add_PlaybackInfoChanged(notice(playbackChanged, onPlaybackChanged).get(),
                                     &playbackToken);
    session->add_MediaPropertiesChanged(notice(propertiesChanged, onPropertiesChanged).get(),
                                        &propertiesToken);
    name = std::to_string(++sessionNumber);
    players.update(name, {});
    readStatus();
    askForSong();
}

void MediaSession::leaveSession() {
    if (!session) return;
    session->remove_PlaybackInfoChanged(playbackToken);
    session->remove_MediaPropertiesChanged(propertiesToken);
    session.reset();
    question.reset();
    players.remove(name);
}

void MediaSession::readStatus() {
    Reference<PlaybackInfo> info;
    if (!session || FAILED(session->GetPlaybackInfo(info.out())) || !info) return;
    PlaybackStatus status{};
    if (SUCCEEDED(info->get_PlaybackStatus(&status))) players.update(name, {statusOf(status), {}});
}

/// Where several questions are on their way, the last one is answered.
void MediaSession::askForSong() {
    if (!session || FAILED(session->TryGetMediaPropertiesAsync(question.out())) || !question) {
        return;
    }
    question->put_Completed(notice(propertiesReady, onPropertiesReady).get());
}

void MediaSession::readSong() {
    // It fails for a question that is still open: the message was of one before.
    Reference<MediaProperties> properties;
    if (!question || FAILED(question->GetResults(properties.out())) || !properties) return;
    question.reset();
    HSTRING title = nullptr;
    HSTRING artist = nullptr;
    properties->get_Title(&title);
    properties->get_Artist(&artist);
    players.update(
        name, {std::nullopt, [song = PlayerSong{taken(title), {taken(artist)}}] { return song; }});
}

Reference<Callback> MediaSession::notice(const IID& kind, UINT message) const {
    Reference<Callback> made;
    *made.out() = new Notice(kind, receiver, message);
    return made;
}

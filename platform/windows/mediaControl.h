#pragma once

/// What Windows 10 declares of its media sessions (Windows.Media.Control), of which the compiler's
/// headers know nothing, as far as it is used here. The order of the functions is the interface.
#include "platform/windows/win32.h"

#include <eventtoken.h>
#include <inspectable.h>

// They have no virtual destructors: they end with their last reference, and nobody deletes them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

namespace mediaControl {

/// The name of the class that gives out the manager of all sessions.
constexpr const wchar_t* managerClass =
    L"Windows.Media.Control.GlobalSystemMediaTransportControlsSessionManager";

/// The interface of the manager's factory.
constexpr IID managerStatics{
    0x2050c4ee, 0x11a0, 0x57de, {0xae, 0xd7, 0xc9, 0x7c, 0x70, 0x33, 0x82, 0x45}};

/// The interfaces that are called back: when the manager is there, when what is played is known,
/// and when the session is another one, plays or rests, or plays something else.
constexpr IID managerReady{
    0x10f0074e, 0x923d, 0x5510, {0x8f, 0x4a, 0xdd, 0xe3, 0x77, 0x54, 0xca, 0x0e}};
constexpr IID propertiesReady{
    0x84593a3d, 0x951a, 0x55b6, {0x83, 0x53, 0x52, 0x05, 0xe5, 0x77, 0x79, 0x7b}};
constexpr IID sessionChanged{
    0x228bd0ed, 0x1fa2, 0x5e9b, {0xa6, 0xec, 0x42, 0x56, 0x61, 0x73, 0x10, 0x3b}};
constexpr IID playbackChanged{
    0x2bdf1426, 0xd41f, 0x5896, {0x89, 0x7f, 0xef, 0xc0, 0xb0, 0xfa, 0x73, 0x92}};
constexpr IID propertiesChanged{
    0x0f2ce2b7, 0xafa7, 0x5ed0, {0x8c, 0xb6, 0x8c, 0x40, 0xcf, 0x9b, 0x3a, 0x5f}};

/// An object that is called back. Neither argument is needed here: who calls, and what it says of
/// it. The second one of an operation that is over says how it ended.
struct Callback : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Invoke(void* sender, void* what) = 0;

protected:
    ~Callback() = default;
};

/// An answer that comes later.
template <typename Result>
struct Operation : IInspectable {
    virtual HRESULT STDMETHODCALLTYPE put_Completed(Callback* callback) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Completed(Callback** callback) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetResults(Result* result) = 0;

protected:
    ~Operation() = default;
};

/// What is played.
struct MediaProperties : IInspectable {
    virtual HRESULT STDMETHODCALLTYPE get_Title(HSTRING* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Subtitle(HSTRING* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_AlbumArtist(HSTRING* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Artist(HSTRING* value) = 0;

protected:
    ~MediaProperties() = default;
};

/// Whether it is played, in the system's numbers.
enum PlaybackStatus { Closed, Opened, Changing, Stopped, Playing, Paused };

/// How it is played.
struct PlaybackInfo : IInspectable {
    virtual HRESULT STDMETHODCALLTYPE get_Controls(IInspectable** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_PlaybackStatus(PlaybackStatus* value) = 0;

protected:
    ~PlaybackInfo() = default;
};

using Attempt = Operation<boolean>;

/// One player, with its commands and with what it calls back.
struct Session : IInspectable {
    virtual HRESULT STDMETHODCALLTYPE get_SourceAppUserModelId(HSTRING* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    TryGetMediaPropertiesAsync(Operation<MediaProperties*>** operation) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTimelineProperties(IInspectable** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPlaybackInfo(PlaybackInfo** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE TryPlayAsync(Attempt** operation) = 0;
    virtual HRESULT STDMETHODCALLTYPE TryPauseAsync(Attempt** operation) = 0;
    virtual HRESULT STDMETHODCALLTYPE TryStopAsync(Attempt** operation) = 0;
    virtual HRESULT STDMETHODCALLTYPE TryRecordAsync(Attempt** operation) = 0;
    virtual HRESULT STDMETHODCALLTYPE TryFastForwardAsync(Attempt** operation) = 0;
    virtual HRESULT STDMETHODCALLTYPE TryRewindAsync(Attempt** operation) = 0;
    virtual HRESULT STDMETHODCALLTYPE TrySkipNextAsync(Attempt** operation) = 0;
    virtual HRESULT STDMETHODCALLTYPE TrySkipPreviousAsync(Attempt** operation) = 0;
    virtual HRESULT STDMETHODCALLTYPE TryChangeChannelUpAsync(Attempt** operation) = 0;
    virtual HRESULT STDMETHODCALLTYPE TryChangeChannelDownAsync(Attempt** operation) = 0;
    virtual HRESULT STDMETHODCALLTYPE TryTogglePlayPauseAsync(Attempt** operation) = 0;
    virtual HRESULT STDMETHODCALLTYPE TryChangeAutoRepeatModeAsync(int mode,
                                                                   Attempt** operation) = 0;
    virtual HRESULT STDMETHODCALLTYPE TryChangePlaybackRateAsync(double rate,
                                                                 Attempt** operation) = 0;
    virtual HRESULT STDMETHODCALLTYPE TryChangeShuffleActiveAsync(boolean active,
                                                                  Attempt** operation) = 0;
    virtual HRESULT STDMETHODCALLTYPE TryChangePlaybackPositionAsync(INT64 position,
                                                                     Attempt** operation) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    add_TimelinePropertiesChanged(Callback* callback, EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    remove_TimelinePropertiesChanged(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE add_PlaybackInfoChanged(Callback* callback,
                                                              EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE remove_PlaybackInfoChanged(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE add_MediaPropertiesChanged(Callback* callback,
                                                                 EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    remove_MediaPropertiesChanged(EventRegistrationToken token) = 0;

protected:
    ~Session() = default;
};

/// Knows the session that the keys of the system control.
struct Manager : IInspectable {
    virtual HRESULT STDMETHODCALLTYPE GetCurrentSession(Session** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSessions(IInspectable** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE add_CurrentSessionChanged(Callback* callback,
                                                                EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    remove_CurrentSessionChanged(EventRegistrationToken token) = 0;

protected:
    ~Manager() = default;
};

/// The manager's factory.
struct Statics : IInspectable {
    virtual HRESULT STDMETHODCALLTYPE RequestAsync(Operation<Manager*>** operation) = 0;

protected:
    ~Statics() = default;
};

}  // namespace mediaControl

#pragma GCC diagnostic pop

#pragma once

#include "base/Event.h"
#include "stores/SettingsFile.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <list>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>

class EventLoop;
class Timer;

/// The contacts whose last words are kept, the one who spoke longest ago first.
class Speakers {
public:
    /// The contact has spoken; `bytes` is what is kept of that, the name included.
    void note(const std::string& contact, std::size_t bytes);
    /// Whether more is kept than may be.
    [[nodiscard]] bool areTooMany() const;
    /// Takes out the one who spoke longest ago.
    [[nodiscard]] std::string takeOldest();

private:
    struct Speaker {
        std::string contact;
        std::size_t bytes;
    };
    std::list<Speaker> byAge;
    std::map<std::string, std::list<Speaker>::iterator, std::less<>> places;
    std::size_t allBytes = 0;
};

/// Everything that is remembered between runs, apart from the notes: strings by section and key.
///
/// Reads are answered from memory, yet what another program writes into the file is seen by the
/// next read, or within a `OneLook` by the next event's. A write is on the disk when it returns,
/// but for last words. What is wrong with the file is reported once, and the program goes on with
/// what it has in memory; what the file did not take goes there as soon as it can be used again.
class SettingsStore {
    /// Which reads look at the file.
    enum class Look : std::uint8_t { Each, Next, None };

public:
    /// The section of what contacts said last, one key for each. A kill does not lose them, a power
    /// cut those of the last seconds. Where there are too many, those of the contacts who spoke
    /// longest ago go.
    static constexpr std::string_view lastWords = "lastthingusersaid";
    static constexpr std::size_t mostLastWords = 32767;
    static constexpr std::size_t mostBytesOfLastWords = std::size_t{16} << 20U;

    /// `onTrouble` takes one line for the user, in UTF-8: what is wrong and what becomes of it.
    /// `now` is the time that waiting for other programs is counted in.
    SettingsStore(std::filesystem::path path, Event<std::string_view> onTrouble,
                  LockPatience::Now now = std::chrono::steady_clock::now);
    ~SettingsStore();  // NOLINT(bugprone-exception-escape)
    SettingsStore(const SettingsStore&) = delete;
    SettingsStore& operator=(const SettingsStore&) = delete;

    /// From now on last words are written between the events of `loop`, and not before a write of
    /// them returns; what a lock kept from the file goes there within a second after the lock; and
    /// what a power cut might take is on the disk after some seconds. Without this, all of it
    /// happens with a later read or write, or at the end.
    void maintain(EventLoop& loop);

    /// Lives as long as an event that reads several settings: only the first read looks at the
    /// file. It has to end before the event gives the loop a turn.
    class OneLook {
    public:
        explicit OneLook(SettingsStore& store)
            : store(store), outer(std::exchange(store.look, Look::Next)) {}
        ~OneLook() { store.look = outer; }
        OneLook(const OneLook&) = delete;
        OneLook& operator=(const OneLook&) = delete;

    private:
        SettingsStore& store;
        const Look outer;
    };

    /// The stored value; empty when there is none.
    [[nodiscard]] std::string ReadSetting(std::string_view section, std::string_view key);
    /// Replaces the stored value, also by an empty one.
    void WriteSetting(std::string_view section, std::string_view key, std::string_view value);

private:
    void refreshForRead();
    void refresh();
    void tryAgain();
    [[nodiscard]] bool reopen();
    void reload();
    void save();
    void beginMaintenance();
    void maintainFile();
    void keep(SettingName name, std::string value);
    void dropOldestWords();
    void handle(const SettingsTrouble& trouble);
    void replaceDamagedFile(const std::string& reason);
    void reportOnce(SettingsTrouble::Kind kind, const std::string& text);

    std::filesystem::path path;
    Event<std::string_view> onTrouble;
    LockPatience::Now now;
    SettingsFile file;
    /// The file did not take or give what it was asked for. It is written to again when there is
    /// something new to write; where it can be read, it still is.
    bool givenUp = false;
    /// A file that takes long is left alone until then.
    std::chrono::steady_clock::time_point leftAloneUntil{};
    Look look = Look::Each;
    bool loaded = false;
    int knownVersion = 0;
    Settings settings;
    Speakers speakers;
    /// What is in memory only, because the file did not take it, or not yet.
    SettingChanges unsaved;
    std::set<SettingsTrouble::Kind> reported;
    /// Last words wait for the end of the event.
    std::unique_ptr<Timer> afterEvent;
    bool isAfterEvent = true;
    /// Ticks while a lock is waited for, or last words are not on the disk for good.
    std::unique_ptr<Timer> maintenance;
    bool isMaintaining = false;
    int roundsToSettle = 0;
};

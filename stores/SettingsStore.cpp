#include "stores/SettingsStore.h"

#include "platform/EventLoop.h"

#include <algorithm>
#include <system_error>
#include <utility>
#include <vector>

namespace {

/// Short enough to write within a second after a lock what it kept from the file.
constexpr std::chrono::milliseconds maintenanceInterval{500};
/// Long enough for a lively conversation to cost two syncs of the disk in all that time.
constexpr int roundsUntilSettled = 10;
/// How long a file that took too long is left alone.
constexpr std::chrono::seconds rest{10};

/// The first free name of the form "settings.db.damaged-1".
std::filesystem::path nameForDamaged(const std::filesystem::path& path) {
    int number = 1;
    std::error_code error;
    while (std::filesystem::exists(withEnding(path, ".damaged-" + std::to_string(number)), error)) {
        ++number;
    }
    return withEnding(path, ".damaged-" + std::to_string(number));
}

}  // namespace

void Speakers::note(const std::string& contact, std::size_t bytes) {
    const auto [place, isNew] = places.try_emplace(contact);
    if (!isNew) {
        allBytes -= place->second->bytes;
        byAge.erase(place->second);
    }
    allBytes += bytes;
    place->second = byAge.insert(byAge.end(), {contact, bytes});
}

bool Speakers::areTooMany() const {
    return byAge.size() > SettingsStore::mostLastWords ||
           allBytes > SettingsStore::mostBytesOfLastWords;
}

std::string Speakers::takeOldest() {
    Speaker oldest = std::move(byAge.front());
    byAge.pop_front();
    places.erase(oldest.contact);
    allBytes -= oldest.bytes;
    return std::move(oldest.contact);
}

SettingsStore::SettingsStore(std::filesystem::path path, Event<std::string_view> onTrouble,
                             LockPatience::Now now)
    : path(std::move(path)), onTrouble(std::move(onTrouble)), now(now), file(this->path, now) {
    refresh();
}

// What `onTrouble` may throw ends a program that ends anyway.
// NOLINTNEXTLINE(bugprone-exception-escape)
SettingsStore::~SettingsStore() {
    if (unsaved.empty()) return;
    // The last chance for what is in memory only.
    file.renewPatience();
    leftAloneUntil = {};
    isAfterEvent = true;
    tryAgain();
    refresh();
}

void SettingsStore::maintain(EventLoop& loop) {
    afterEvent = loop.makeTimer();
    afterEvent->tick = [this] {
        afterEvent->disable();
        isAfterEvent = true;
        tryAgain();
        refresh();
    };
    maintenance = loop.makeTimer();
    maintenance->tick = [this] { maintainFile(); };
}

std::string SettingsStore::ReadSetting(std::string_view section, std::string_view key) {
    refreshForRead();
    const auto found = settings.find(std::pair(section, key));
    return found == settings.end() ? std::string() : found->second;
}

void SettingsStore::WriteSetting(std::string_view section, std::string_view key,
                                 std::string_view value) {
    const bool canWait = section == lastWords && afterEvent;
    if (canWait) {
        refreshForRead();
    } else {
        tryAgain();
        refresh();
    }
    const auto known = settings.find(std::pair(section, key));
    const bool inMemory = known != settings.end() && known->second == value;
    if (inMemory && loaded && unsaved.empty()) return;
    const SettingName name{section, key};
    unsaved[name] = value;
    keep(name, std::string(value));
    dropOldestWords();
    if (canWait) {
        isAfterEvent = false;
        afterEvent->enable(std::chrono::milliseconds{1});
    } else {
        save();
    }
}

/// Refreshes as far as a read needs it.
void SettingsStore::refreshForRead() {
    if (look == Look::None) return;
    if (look == Look::Next) look = Look::None;
    refresh();
}

/// Brings the memory up to what the file holds, and the file to what is in memory only.
void SettingsStore::refresh() {
    if (givenUp && !file.isOpen()) return;
    const bool mayHaveChanged = file.mayHaveChanged();
    const bool toSave = !unsaved.empty() && !givenUp && isAfterEvent;
    if (!mayHaveChanged && loaded && !toSave) return;
    if ((!file.isOpen() || file.isReplaced()) && !reopen()) return;
    int version = 0;
    if (const auto trouble = file.readVersion(version)) {
        // A change may become whole without another change of the file's time.
        loaded = false;
        handle(*trouble);
    } else if (!loaded || version != knownVersion) {
        knownVersion = version;
        reload();
    }
    if (!loaded) return;
    if (unsaved.empty()) {
        reported.erase(SettingsTrouble::Kind::Locked);
    } else if (!givenUp && isAfterEvent) {
        save();
    }
}

/// A file that was of no use may be of use again, to be opened anew.
void SettingsStore::tryAgain() {
    if (now() < leftAloneUntil) return;
    if (std::exchange(givenUp, false)) file.close();
}

bool SettingsStore::reopen() {
    loaded = false;
    givenUp = false;
    if (const auto trouble = file.open()) handle(*trouble);
    return file.isOpen();
}

void SettingsStore::reload() {
    std::vector<Setting> rows;
    const auto trouble = file.load(rows);
    Settings fresh;
    // What can no longer be read is kept as it was known.
    if (trouble) {
        fresh = std::move(settings);
    } else {
        speakers = {};
    }
    settings = std::move(fresh);
    for (Setting& row : rows) {
        const auto waiting = unsaved.find(row.name);
        if (waiting == unsaved.end()) keep(std::move(row.name), std::move(row.value));
    }
    for (const auto& [name, value] : unsaved) {
        if (value) keep(name, *value);
    }
    loaded = !trouble;
    dropOldestWords();
    if (trouble) handle(*trouble);
}

void SettingsStore::keep(SettingName name, std::string value) {
    if (name.first == lastWords) speakers.note(name.second, name.second.size() + value.size());
    settings.insert_or_assign(std::move(name), std::move(value));
}

void SettingsStore::dropOldestWords() {
    while (speakers.areTooMany()) {
        const SettingName name{lastWords, speakers.takeOldest()};
        settings.erase(name);
        // What is in the file as well goes with the next change or start.
        if (unsaved.erase(name) == 0) unsaved[name] = std::nullopt;
    }
}

void SettingsStore::save() {
    if (!file.isOpen()) return;
    isAfterEvent = true;
    const bool areLastWords = std::ranges::all_of(
        unsaved, [](const auto& change) { return change.first.first == lastWords; });
    if (const auto trouble =
            file.write(unsaved, areLastWords ? SettingsFile::Durability::SurvivesKill
                                             : SettingsFile::Durability::SurvivesPowerCut)) {
        handle(*trouble);
        return;
    }
    unsaved.clear();
    reported.erase(SettingsTrouble::Kind::Locked);
    if (file.isUnsettled() && roundsToSettle == 0) {
        roundsToSettle = roundsUntilSettled;
        beginMaintenance();
    }
}

/// Begins the maintenance, if there is a loop for it.
void SettingsStore::beginMaintenance() {
    if (maintenance && !std::exchange(isMaintaining, true))
        maintenance->enable(maintenanceInterval);
}

void SettingsStore::maintainFile() {
    refresh();
    if (roundsToSettle > 0 && --roundsToSettle == 0) file.settle();
    const bool isLocked = reported.contains(SettingsTrouble::Kind::Locked) && !givenUp;
    if (isLocked || roundsToSettle > 0) return;
    maintenance->disable();
    isMaintaining = false;
}

void SettingsStore::handle(const SettingsTrouble& trouble) {
    const std::string name = path.string();
    switch (trouble.kind) {
        case SettingsTrouble::Kind::Damaged: replaceDamagedFile(trouble.reason); break;
        case SettingsTrouble::Kind::Locked:
            beginMaintenance();
            reportOnce(trouble.kind, "another program keeps the settings in " + name +
                                         " locked; changes are kept in memory and saved when the "
                                         "file is free again");
            break;
        case SettingsTrouble::Kind::Endless:
            givenUp = true;
            file.close();
            leftAloneUntil = now() + rest;
            reportOnce(trouble.kind,
                       "the settings in " + name +
                           " are too much, or take too long, to read or write; changes "
                           "are kept in memory. Move the file to another place, and "
                           "they are saved into a new one with the next change");
            break;
        case SettingsTrouble::Kind::Unusable:
            givenUp = true;
            reportOnce(trouble.kind,
                       "the settings in " + name + " cannot be used (" + trouble.reason +
                           "); changes are kept in memory. Make the file and its "
                           "folder readable and writable, and they are saved with the "
                           "next change");
            break;
    }
}

/// Keeps the damaged file under another name and begins a new one with all that is in memory.
void SettingsStore::replaceDamagedFile(const std::string& reason) {
    const auto giveUp = [this](const std::string& why) {
        handle({SettingsTrouble::Kind::Unusable, why});
        file.close();
    };
    file.close();
    const std::filesystem::path kept = nameForDamaged(path);
    std::error_code error;
    std::filesystem::rename(path, kept, error);
    if (error) {
        giveUp(reason + "; it cannot be moved aside: " + error.message());
        return;
    }
    // They would be taken for a part of the next file of the name.
    for (const std::string_view companion : settingsCompanions) {
        std::filesystem::rename(withEnding(path, companion), withEnding(kept, companion), error);
    }
    onTrouble("the settings in " + path.string() + " are damaged (" + reason +
              "); the file is kept as " + kept.string() +
              ", and a new one is begun with what could be read");
    for (const auto& [name, value] : settings)
        unsaved[name] = value;
    auto trouble = file.open();
    if (!trouble) trouble = file.write(unsaved, SettingsFile::Durability::SurvivesPowerCut);
    if (!trouble) trouble = file.readVersion(knownVersion);
    if (trouble) {
        giveUp(trouble->reason);
        return;
    }
    file.beginLog();
    unsaved.clear();
    loaded = true;
}

void SettingsStore::reportOnce(SettingsTrouble::Kind kind, const std::string& text) {
    if (reported.insert(kind).second) onTrouble(text);
}

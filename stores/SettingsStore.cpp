#include "stores/SettingsStore.h"

#include <system_error>
#include <utility>

namespace {

/// How long another program that has locked the file is waited for: longer than an ordinary commit
/// takes, short enough not to be noticed in a conversation.
constexpr std::chrono::milliseconds patience{250};

/// A file that is moved aside takes along what SQLite left beside it, or that would be taken for a
/// part of the next file of the name.
constexpr const char* companions[] = {"-journal", "-wal", "-shm"};

std::filesystem::path withEnding(const std::filesystem::path& path, const std::string& ending) {
    std::filesystem::path longer = path;
    longer += ending;
    return longer;
}

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

SettingsStore::SettingsStore(std::filesystem::path path, Event<std::string_view> tell)
    : path(std::move(path)), tell(std::move(tell)), stamp(this->path) {
    file.setPatience(patience);
    refresh();
}

// What whoever is told of trouble may throw ends a program that ends anyway.
// NOLINTNEXTLINE(bugprone-exception-escape)
SettingsStore::~SettingsStore() {
    if (unsaved.empty()) return;
    tryAgain();
    // The last chance for what is in memory only.
    file.setPatience(patience);
    refresh();
}

std::string SettingsStore::ReadSetting(std::string_view section, std::string_view key) {
    refresh();
    const auto found = settings.find(std::pair(section, key));
    return found == settings.end() ? std::string() : found->second;
}

void SettingsStore::WriteSetting(std::string_view section, std::string_view key,
                                 std::string_view value) {
    tryAgain();
    refresh();
    const auto known = settings.find(std::pair(section, key));
    const bool inMemory = known != settings.end() && known->second == value;
    if (inMemory && loaded && unsaved.empty()) return;
    const std::pair name{std::string(section), std::string(key)};
    settings[name] = value;
    unsaved[name] = value;
    save();
}

/// Brings the memory up to what the file holds, and the file to what is in memory only.
void SettingsStore::refresh() {
    if (givenUp && !file.isOpen()) return;
    const bool toSave = !unsaved.empty() && !givenUp;
    if (!stamp.mayHaveChanged() && loaded && !toSave && !file.hasChangesBeside()) return;
    if ((!file.isOpen() || file.hasMoved()) && !reopen()) return;
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
        unlocked();
    } else if (!givenUp) {
        save();
    }
}

/// A file that was of no use may be of use again, to be opened anew.
void SettingsStore::tryAgain() {
    if (std::exchange(givenUp, false)) file.close();
}

bool SettingsStore::reopen() {
    loaded = false;
    givenUp = false;
    if (const auto trouble = file.open(path)) handle(*trouble);
    return file.isOpen();
}

void SettingsStore::reload() {
    Settings fresh;
    const auto trouble = file.load(fresh);
    for (const auto& [name, value] : unsaved)
        fresh[name] = value;
    loaded = !trouble;
    if (trouble) {
        // What can no longer be read is kept as it was known.
        fresh.merge(settings);
    }
    settings = std::move(fresh);
    if (trouble) handle(*trouble);
}

void SettingsStore::save() {
    if (!file.isOpen()) return;
    if (const auto trouble = file.write(unsaved)) {
        handle(*trouble);
        return;
    }
    unsaved.clear();
    unlocked();
}

void SettingsStore::handle(const SettingsTrouble& trouble) {
    const std::string name = path.string();
    switch (trouble.kind) {
        case SettingsTrouble::Kind::Damaged: replaceDamagedFile(trouble.reason); break;
        case SettingsTrouble::Kind::Locked:
            // One that keeps the file for long is not waited for at each use.
            file.setPatience(std::chrono::milliseconds{0});
            tellOnce(trouble.kind, "another program keeps the settings in " + name +
                                       " locked; changes are kept in memory and saved when the "
                                       "file is free again");
            break;
        case SettingsTrouble::Kind::Unusable:
            givenUp = true;
            tellOnce(trouble.kind, "the settings in " + name + " cannot be used (" +
                                       trouble.reason +
                                       "); changes last until the end of this run. Make the file "
                                       "and its folder readable and writable and start Cobweave "
                                       "again");
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
    for (const char* const companion : companions) {
        std::filesystem::rename(withEnding(path, companion), withEnding(kept, companion), error);
    }
    tell("the settings in " + path.string() + " are damaged (" + reason +
         "); the file is kept as " + kept.string() +
         ", and a new one is begun with what could be read");
    unsaved = settings;
    auto trouble = file.open(path);
    if (!trouble) trouble = file.write(unsaved);
    if (!trouble) trouble = file.readVersion(knownVersion);
    if (trouble) {
        giveUp(trouble->reason);
        return;
    }
    unsaved.clear();
    loaded = true;
}

void SettingsStore::tellOnce(SettingsTrouble::Kind kind, const std::string& text) {
    if (told.insert(kind).second) tell(text);
}

/// The next program that locks the file is waited for, and told of, again.
void SettingsStore::unlocked() {
    if (told.erase(SettingsTrouble::Kind::Locked) > 0) file.setPatience(patience);
}

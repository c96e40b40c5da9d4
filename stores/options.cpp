#include "stores/options.h"

#include "stores/SettingsStore.h"

namespace {

constexpr std::string_view section = "Options";

std::string stored(SettingsStore& settings, std::string_view key) {
    return settings.ReadSetting(section, key);
}

}  // namespace

bool options::isSet(SettingsStore& settings, const Switch& option) {
    return !stored(settings, option.key).empty();
}

bool options::isOn(SettingsStore& settings, const Switch& option) {
    if (option.initial) return stored(settings, option.key) != option.words.off;
    return saysOn(settings, option);
}

bool options::saysOn(SettingsStore& settings, const Switch& option) {
    return stored(settings, option.key) == option.words.on;
}

std::string options::textOf(SettingsStore& settings, const Text& option) {
    std::string text = stored(settings, option.key);
    if (text.empty()) text = option.initial;
    return text;
}

void options::set(SettingsStore& settings, const Switch& option, bool on) {
    settings.WriteSetting(section, option.key, on ? option.words.on : option.words.off);
}

void options::set(SettingsStore& settings, const Text& option, std::string_view text) {
    settings.WriteSetting(section, option.key, text);
}

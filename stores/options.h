#pragma once

#include <string>
#include <string_view>

class SettingsStore;

/// What the user can set, one row each, with the readers and writers of these rows. The table in
/// README.md says the same.
///
///     if (isOn(settings, options::timestamp)) ...
///     const std::string status = textOf(settings, options::initialStatus);
///
/// Each call asks the store, so a change counts from the next use on. Words count as they are
/// written here, capitals too.
namespace options {

/// How a switch is written.
struct Words {
    std::string_view on;
    std::string_view off;
};
/// The two pairs in use.
inline constexpr Words trueFalse{"True", "False"};
inline constexpr Words oneZero{"1", "0"};

/// A setting that is on or off.
struct Switch {
    std::string_view key;
    Words words;
    /// What counts while it holds neither word, as it does until it is set.
    bool initial;
    std::string_view meaning;
};

/// A setting that is a text of any kind. The empty text is the same as none.
struct Text {
    std::string_view key;
    /// What counts while it is not set.
    std::string_view initial;
    std::string_view meaning;
};

/// The settings. The last text of each row says what it means.
inline constexpr Text initialStatus{
    "initialStatus", "Online",
    "the status to sign in with: `Online`, `Busy`, `Be Right Back`, `Away`, `On The Phone`, "
    "`Out To Lunch`, `Appear Offline`"};
inline constexpr Switch useristyping{"useristyping", trueFalse, false,
                                     "`True` hides from your contacts that you are typing"};
inline constexpr Switch constants{
    "constants", trueFalse, true,
    "`False` switches message constants off, and chat commands with them"};
inline constexpr Switch preventtypo{
    "preventtypo", trueFalse, false,
    "`True` keeps texts here that begin with `!` and are no command"};
inline constexpr Switch timestamp{"timestamp", trueFalse, false,
                                  "`True` puts the time behind what contacts say"};
inline constexpr Text tsprefix{
    "tsprefix", "",
    "the character before that time; with the Messenger Plus add-on `[` while one of the two is "
    "missing"};
inline constexpr Text tspostfix{
    "tspostfix", "",
    "the character behind that time; with the Messenger Plus add-on `]` while one of the two is "
    "missing"};
/// The brackets that count where one of the two is missing: a pair belongs together.
inline constexpr const char* usualPrefix = "[";
inline constexpr const char* usualPostfix = "]";
inline constexpr Text tscolor{"tscolor", "red",
                              "`black` or `red`, for those who have the Messenger Plus add-on"};
inline constexpr std::string_view red = tscolor.initial;
inline constexpr std::string_view black = "black";
inline constexpr Switch alertopenwindow{"alertopenwindow", trueFalse, false,
                                        "`True` tells you when a contact opens a conversation"};
inline constexpr Switch alertjoinwindow{
    "alertjoinwindow", trueFalse, false,
    "`True` tells you when a contact joins one, if `alertopenwindow` is on too"};
inline constexpr Switch alertclosewindow{"alertclosewindow", trueFalse, false,
                                         "`True` tells you when a contact leaves one"};
inline constexpr Switch alertoffline{"alertoffline", trueFalse, false,
                                     "`True` tells you when a contact goes offline"};
inline constexpr Text callby{
    "callby", "e",
    "`e` names contacts by address in the first two of these alerts, `fn` by nick name"};
inline constexpr std::string_view byAddress = callby.initial;
inline constexpr std::string_view byNickName = "fn";
inline constexpr Switch lastthing{
    "lastthing", trueFalse, false,
    "`True` repeats the last thing that a contact said when that contact joins"};
inline constexpr Switch progress{"progress", oneZero, false,
                                 "`1` shows how far a sign-in has come, in the two places below"};
inline constexpr Switch trayicon{"trayicon", oneZero, false,
                                 "`1` shows it in the tool-tip of the icon"};
inline constexpr Switch messengerwindow{"messengerwindow", oneZero, false,
                                        "`1` shows it in the title bar of Messenger's main window"};
inline constexpr Switch windowrename{"windowrename", oneZero, false,
                                     "`1` gives that window a title of your own"};
inline constexpr Text windowrenamecaption{"windowrenamecaption", "", "that title"};
/// The title until the setting is read.
inline constexpr const char* captionToEnter = "Enter Window Caption...";

/// Whether anything was ever saved under the key.
[[nodiscard]] bool isSet(SettingsStore& settings, const Switch& option);

/// Whether the switch counts as on.
[[nodiscard]] bool isOn(SettingsStore& settings, const Switch& option);

/// Whether the switch holds its word for on. Unlike `isOn`, this does not hold for one that is on
/// until it is set.
[[nodiscard]] bool saysOn(SettingsStore& settings, const Switch& option);

/// The text as it is stored, or what counts in its place.
[[nodiscard]] std::string textOf(SettingsStore& settings, const Text& option);

/// Saves the switch by its word.
void set(SettingsStore& settings, const Switch& option, bool on);
/// Saves the text.
void set(SettingsStore& settings, const Text& option, std::string_view text);
/// A text is no switch, although a literal would pass for true.
void set(SettingsStore& settings, const Switch& option, const char* text) = delete;

}  // namespace options

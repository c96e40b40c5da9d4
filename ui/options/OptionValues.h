#pragma once

#include <array>
#include <string>
#include <string_view>

class SettingsStore;

/// What the options window edits, as its controls show it. The title of the Messenger window is not
/// among it: that is `frmTitle`'s.
struct OptionValues {
    std::string initialStatus;
    bool useristyping = false;
    bool alertoffline = false;
    bool alertopenwindow = false;
    bool alertclosewindow = false;
    bool alertjoinwindow = false;
    bool constants = false;
    bool timestamp = false;
    /// Contacts are named by friendly name, else by address.
    bool callbyFriendlyName = false;
    bool preventtypo = false;
    bool progress = false;
    bool messengerwindow = false;
    bool trayicon = false;
    bool lastthing = false;
    std::string tsprefix;
    std::string tspostfix;
    /// The time is black, else red.
    bool tscolorBlack = false;

    /// The settings of this moment, with what the window shows for those that are not set.
    [[nodiscard]] static OptionValues read(SettingsStore& settings);
    /// All of them, one after the other. One that is not taken does not keep the next from it.
    void write(SettingsStore& settings) const;

    /// Where one of the two is missing, both are what they are at first: a pair belongs together.
    void completePair();
};

/// The statuses that a user can sign in with, in the order in which they are offered.
inline constexpr std::array<std::string_view, 7> statusNames{
    "Online", "Busy", "Be Right Back", "Away", "On The Phone", "Out To Lunch", "Appear Offline"};

[[nodiscard]] bool isStatusName(std::string_view text);

#pragma once

#include "ui/common/PagedForm.h"
#include "ui/common/labels.h"
#include "ui/options/optionPictures.h"

#include <array>
#include <span>
#include <utility>

/// The texts of the options window that never change, and its pages with their buttons.
namespace optionsDesign {

inline constexpr std::array<PagedForm::Page, 5> pages{{
    {0, "   General Options", optionPictures::paintSwitches, 1080},
    {1, "   Signing In", optionPictures::paintKey, 1680},
    {2, "   Timestamp Messages", optionPictures::paintClock, 2280},
    {4, "   Alerts", optionPictures::paintBell, 2880},
    {5, "   Window Rename", optionPictures::paintTitleBar, 3480},
}};

inline constexpr PagedForm::Design window{"Cobweave - Options",    "Options", 8385, 6045,
                                          {2880, 960, 5235, 4425}, pages,     5};

inline constexpr std::array<Caption, 5> general{{
    {"Label22", {180, 960, 4965, 225}, "Disable \"User Is Typing\" message", true},
    {"Label23", {180, 1650, 4965, 225}, "Allow Message Constants", true},
    {"Label19", {180, 2340, 4965, 225}, "Label Contact By (For Open/Join Window Alerts)", true},
    {"Label5",
     {180, 3030, 4965, 225},
     "Prevent Command Typo (i.e \"!notee\" instead of \"!note\")",
     true},
    {"Label13", {180, 3720, 4965, 225}, "Show Last Thing Contact Said", true},
}};

inline constexpr std::array<Caption, 3> signingIn{{
    {"Label9", {180, 960, 2700, 225}, "Inital Sign In Status", true},
    {"Label10", {180, 1785, 2700, 225}, "Sign In Progress", true},
    {"Label7", {180, 2505, 2700, 225}, "Show in:", true},
}};

inline constexpr std::array<Caption, 3> timestamps{{
    {"Label8", {180, 1605, 900, 225}, "Prefix", true},
    {"Label16", {180, 2070, 900, 225}, "Postfix", true},
    {"Label18", {180, 2550, 900, 225}, "Color:", true},
}};

inline constexpr std::array<Caption, 5> alerts{{
    {"Label17", {180, 960, 4965, 225}, "Change the way you are alerted on contact actions."},
    {"Label24", {180, 1380, 4965, 225}, "Alert when a user goes offline", true},
    {"Label25", {180, 2070, 4965, 225}, "Alert when a user closes a conversation window", true},
    {"Label26", {180, 2760, 4965, 225}, "Alert when a user open a conversation window", true},
    {"Label27", {180, 3450, 4965, 225}, "Alert when a user joins a conversation window", true},
}};

/// By page.
inline constexpr std::array<std::pair<int, std::span<const Caption>>, 4> captions{
    {{0, general}, {1, signingIn}, {2, timestamps}, {4, alerts}}};

}  // namespace optionsDesign

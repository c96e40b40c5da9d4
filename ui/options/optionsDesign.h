#pragma once

#include "ui/common/PagedForm.h"
#include "ui/common/labels.h"
#include "ui/options/optionPictures.h"

#include <array>
#include <span>
#include <utility>

/// The pages of the options window with their buttons, and the texts that belong to no control
/// alone.
namespace optionsDesign {

/// In the order of their buttons.
inline constexpr std::array<PagedForm::Page, 5> pages{{
    {0, "   General Options", optionPictures::paintSwitches, 1080},
    {1, "   Signing In", optionPictures::paintKey, 1680},
    {2, "   Timestamp Messages", optionPictures::paintClock, 2280},
    {4, "   Alerts", optionPictures::paintBell, 2880},
    {5, "   Window Rename", optionPictures::paintTitleBar, 3480},
}};

/// Title, banner and size of the window; its pages and their place.
inline constexpr PagedForm::Design window{"Cobweave - Options",    "Options", 8385, 6045,
                                          {2880, 960, 5235, 4425}, pages,     5};

// The texts of one page each.
inline constexpr std::array<Caption, 1> general{{
    {"Label19", {180, 2340, 4965, 225}, "Label Contact By (For Open/Join Window Alerts)", true},
}};
inline constexpr std::array<Caption, 2> signingIn{{
    {"Label10", {180, 1785, 2700, 225}, "Sign In Progress", true},
    {"Label7", {180, 2505, 2700, 225}, "Show in:", true},
}};
inline constexpr std::array<Caption, 1> timestamps{{
    {"LabelSample", {180, 3030, 900, 225}, "Sample", true},
}};
inline constexpr std::array<Caption, 1> alerts{{
    {"Label17", {180, 960, 4965, 225}, "Change the way you are alerted on contact actions."},
}};

/// By page.
inline constexpr std::array<std::pair<int, std::span<const Caption>>, 4> captions{
    {{0, general}, {1, signingIn}, {2, timestamps}, {4, alerts}}};

}  // namespace optionsDesign

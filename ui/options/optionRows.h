#pragma once

#include "stores/options.h"

#include <functional>
#include <string_view>

class QCheckBox;
class QLineEdit;
class QRadioButton;
class SettingsStore;
class StatusBox;
class Toggle;

/// A setting and the control that edits it. The control has to outlive the row.
struct OptionRow {
    /// Sets the control to what the setting says now.
    std::function<void(SettingsStore&)> show;
    /// Writes what the control says.
    std::function<void(SettingsStore&)> save;
};

/// One word of a setting that has two, and the button that stands for it.
struct OptionWord {
    std::string_view word;
    QRadioButton& button;
};

// Only its word for on shows a switch as on, even the one that counts as on until it is set.
[[nodiscard]] OptionRow optionRow(const options::Switch& option, Toggle& control);
[[nodiscard]] OptionRow optionRow(const options::Switch& option, QCheckBox& control);
/// A status, shown as it is stored though it may be none.
[[nodiscard]] OptionRow optionRow(const options::Text& option, StatusBox& control);
/// A character; of a longer text the first one.
[[nodiscard]] OptionRow optionRow(const options::Text& option, QLineEdit& control);
/// One of two words; any that is not `first` counts as the second.
[[nodiscard]] OptionRow optionRow(const options::Text& option, OptionWord first, OptionWord second);

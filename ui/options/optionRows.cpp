#include "ui/options/optionRows.h"

#include "platform/qt/text.h"
#include "ui/options/optionControls.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>

OptionRow optionRow(const options::Switch& option, Toggle& control) {
    return {[&](SettingsStore& settings) { control.setOn(saysOn(settings, option)); },
            [&](SettingsStore& settings) { set(settings, option, control.isOn()); }};
}

OptionRow optionRow(const options::Switch& option, QCheckBox& control) {
    return {[&](SettingsStore& settings) { control.setChecked(saysOn(settings, option)); },
            [&](SettingsStore& settings) { set(settings, option, control.isChecked()); }};
}

OptionRow optionRow(const options::Text& option, StatusBox& control) {
    return {[&](SettingsStore& settings) {
                const QString status = toQString(textOf(settings, option));
                // The index is what the arrow keys start from; the text may be that of no entry.
                control.setCurrentIndex(control.findText(status));
                control.setEditText(status);
            },
            [&](SettingsStore& settings) {
                set(settings, option, fromQString(control.currentText()));
            }};
}

OptionRow optionRow(const options::Text& option, QLineEdit& control) {
    return {[&](SettingsStore& settings) {
                control.setText(toQString(textOf(settings, option).substr(0, 1)));
            },
            [&](SettingsStore& settings) { set(settings, option, fromQString(control.text())); }};
}

OptionRow optionRow(const options::Text& option, OptionWord first, OptionWord second) {
    return {[&option, first, second](SettingsStore& settings) {
                const bool isFirst = textOf(settings, option) == first.word;
                (isFirst ? first : second).button.setChecked(true);
            },
            [&option, first, second](SettingsStore& settings) {
                set(settings, option, first.button.isChecked() ? first.word : second.word);
            }};
}

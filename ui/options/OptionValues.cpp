#include "ui/options/OptionValues.h"

#include "base/Failure.h"
#include "stores/SettingsStore.h"

#include <algorithm>

namespace {

std::string_view word(bool value) { return value ? "True" : "False"; }
std::string_view digit(bool value) { return value ? "1" : "0"; }

}  // namespace

OptionValues OptionValues::read(SettingsStore& settings) {
    OptionValues values;
    const std::string color = settings.ReadSetting("Options", "tscolor");
    const std::string callby = settings.ReadSetting("Options", "callby");
    values.initialStatus = settings.ReadSetting("Options", "initialStatus");
    values.useristyping = settings.ReadSetting("Options", "useristyping") == "True";
    values.alertoffline = settings.ReadSetting("Options", "alertoffline") == "True";
    values.alertopenwindow = settings.ReadSetting("Options", "alertopenwindow") == "True";
    values.alertclosewindow = settings.ReadSetting("Options", "alertclosewindow") == "True";
    values.alertjoinwindow = settings.ReadSetting("Options", "alertjoinwindow") == "True";
    // Off here when it was never set, although constants are expanded then.
    values.constants = settings.ReadSetting("Options", "constants") == "True";
    values.timestamp = settings.ReadSetting("Options", "timestamp") == "True";
    values.callbyFriendlyName = !callby.empty() && callby != "e";
    values.preventtypo = settings.ReadSetting("Options", "preventtypo") == "True";
    values.progress = settings.ReadSetting("Options", "progress") == "1";
    values.messengerwindow = settings.ReadSetting("Options", "messengerwindow") == "1";
    values.trayicon = settings.ReadSetting("Options", "trayicon") == "1";
    values.lastthing = settings.ReadSetting("Options", "lastthing") == "True";
    values.tsprefix = settings.ReadSetting("Options", "tsprefix").substr(0, 1);
    values.tspostfix = settings.ReadSetting("Options", "tspostfix").substr(0, 1);
    values.tscolorBlack = !color.empty() && color != "red";

    if (values.initialStatus.empty()) values.initialStatus = statusNames.front();
    // Here the prefix alone decides. A lone postfix is completed by OK.
    if (values.tsprefix.empty()) values.completePair();
    return values;
}

void OptionValues::write(SettingsStore& settings) const {
    const auto write = [&](std::string_view key, std::string_view value) {
        attempt([&] { settings.WriteSetting("Options", key, value); });
    };
    write("initialStatus", initialStatus);
    write("useristyping", word(useristyping));
    write("alertoffline", word(alertoffline));
    write("alertopenwindow", word(alertopenwindow));
    write("alertclosewindow", word(alertclosewindow));
    write("alertjoinwindow", word(alertjoinwindow));
    write("constants", word(constants));
    write("timestamp", word(timestamp));
    write("callby", callbyFriendlyName ? "fn" : "e");
    write("preventtypo", word(preventtypo));
    write("progress", digit(progress));
    write("messengerwindow", digit(messengerwindow));
    write("trayicon", digit(trayicon));
    write("lastthing", word(lastthing));
    write("tsprefix", tsprefix);
    write("tspostfix", tspostfix);
    write("tscolor", tscolorBlack ? "black" : "red");
}

void OptionValues::completePair() {
    if (!tsprefix.empty() && !tspostfix.empty()) return;
    tsprefix = "[";
    tspostfix = "]";
}

bool isStatusName(std::string_view text) {
    return std::ranges::find(statusNames, text) != statusNames.end();
}

#include "ui/options/OptionValues.h"

#include "stores/options.h"

#include <algorithm>

OptionValues OptionValues::read(SettingsStore& settings) {
    OptionValues values;
    values.initialStatus = textOf(settings, options::initialStatus);
    values.useristyping = isOn(settings, options::useristyping);
    values.alertoffline = isOn(settings, options::alertoffline);
    values.alertopenwindow = isOn(settings, options::alertopenwindow);
    values.alertclosewindow = isOn(settings, options::alertclosewindow);
    values.alertjoinwindow = isOn(settings, options::alertjoinwindow);
    // Off here when it was never set, although constants are expanded then.
    values.constants = saysOn(settings, options::constants);
    values.timestamp = isOn(settings, options::timestamp);
    values.callbyFriendlyName = textOf(settings, options::callby) != "e";
    values.preventtypo = isOn(settings, options::preventtypo);
    values.progress = isOn(settings, options::progress);
    values.messengerwindow = isOn(settings, options::messengerwindow);
    values.trayicon = isOn(settings, options::trayicon);
    values.lastthing = isOn(settings, options::lastthing);
    values.tsprefix = textOf(settings, options::tsprefix).substr(0, 1);
    values.tspostfix = textOf(settings, options::tspostfix).substr(0, 1);
    values.tscolorBlack = textOf(settings, options::tscolor) != "red";
    // Here the prefix alone decides. A lone postfix is completed by OK.
    if (values.tsprefix.empty()) values.completePair();
    return values;
}

void OptionValues::write(SettingsStore& settings) const {
    set(settings, options::initialStatus, initialStatus);
    set(settings, options::useristyping, useristyping);
    set(settings, options::alertoffline, alertoffline);
    set(settings, options::alertopenwindow, alertopenwindow);
    set(settings, options::alertclosewindow, alertclosewindow);
    set(settings, options::alertjoinwindow, alertjoinwindow);
    set(settings, options::constants, constants);
    set(settings, options::timestamp, timestamp);
    set(settings, options::callby, callbyFriendlyName ? "fn" : "e");
    set(settings, options::preventtypo, preventtypo);
    set(settings, options::progress, progress);
    set(settings, options::messengerwindow, messengerwindow);
    set(settings, options::trayicon, trayicon);
    set(settings, options::lastthing, lastthing);
    set(settings, options::tsprefix, tsprefix);
    set(settings, options::tspostfix, tspostfix);
    set(settings, options::tscolor, tscolorBlack ? "black" : "red");
}

void OptionValues::completePair() {
    if (!tsprefix.empty() && !tspostfix.empty()) return;
    tsprefix = "[";
    tspostfix = "]";
}

bool isStatusName(std::string_view text) {
    return std::ranges::find(statusNames, text) != statusNames.end();
}

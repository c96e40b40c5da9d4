#include "desktop/frmTitle.h"

#include "platform/EventLoop.h"
#include "platform/ForeignWindows.h"

#include <chrono>

namespace {

constexpr std::chrono::milliseconds writeInterval{1};
constexpr std::chrono::milliseconds watchInterval{50};

}  // namespace

frmTitle::frmTitle(SettingsStore& settings, ForeignWindows& windows, EventLoop& loop)
    : settings(settings), windows(windows), Timer1(loop.makeTimer()), Timer2(loop.makeTimer()) {
    Timer1->tick = [this] { Timer1_Timer(); };
    Timer2->tick = [this] { Timer2_Timer(); };
    windows.changed = [this] { Timer2->wake(); };
}

frmTitle::~frmTitle() { windows.changed = {}; }

void frmTitle::Load() {
    const bool renamed = isOn(settings, options::windowrename);
    setText1(textOf(settings, options::windowrenamecaption));
    setCheck1(renamed);
    Timer1->enable(writeInterval);
    Timer2->enable(watchInterval);
    Timer1_Timer();
}

void frmTitle::setwindowcaption(std::string_view newcaption) {
    if (!isOn(settings, options::messengerwindow) || !isOn(settings, options::progress)) {
        return;
    }
    windows.SetWindowText(MessengerWindowHandle(), newcaption);
}

void frmTitle::restore() {
    setwindowcaption(Check1 ? std::string_view(Text1) : ForeignWindows::messengerTitle);
}

void frmTitle::setCheck1(bool value) {
    if (value == Check1) return;
    Check1 = value;
    Check1_Click();
}

void frmTitle::Check1_Click() {
    savesettings();
    Timer1->wake();
    if (Check1) return;
    windows.SetWindowText(MessengerWindowHandle(), ForeignWindows::messengerTitle);
    setText1(ForeignWindows::messengerTitle);
}

void frmTitle::setText1(std::string_view text) {
    if (text == Text1) return;
    Text1 = text;
    savesettings();
}

void frmTitle::ChangeTitle() {
    savesettings();
    titleApplied = false;
    Timer1->wake();
}

void frmTitle::savesettings() {
    set(settings, options::windowrenamecaption, Text1);
    set(settings, options::windowrename, Check1);
}

WindowHandle frmTitle::MessengerWindowHandle() { return windows.MessengerWindowHandle(); }

void frmTitle::Timer1_Timer() {
    // Nothing has to be written until the text or the window changes.
    Timer1->rest();
    if (!Check1 || titleApplied) return;
    windows.SetWindowText(MessengerWindowHandle(), Text1);
    titleApplied = true;
    titleWindow = MessengerWindowHandle();
}

void frmTitle::Timer2_Timer() {
    // Nothing can be found until a window opens or closes.
    Timer2->rest();
    if (MessengerWindowHandle() == titleWindow) return;
    titleApplied = false;
    Timer1->wake();
}

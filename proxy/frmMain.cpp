#include "proxy/frmMain.h"

#include "base/Failure.h"
#include "base/text.h"
#include "conversation/messageConstants.h"
#include "desktop/mdlFunctions.h"
#include "desktop/winamp.h"
#include "platform/MediaPlayer.h"
#include "platform/MessageBox.h"
#include "stores/NotesStore.h"
#include "stores/options.h"

#include <cstdlib>
#include <utility>

using namespace std::string_view_literals;

namespace {

constexpr std::chrono::milliseconds songInterval{1000};

}  // namespace

frmMain::frmMain(Network& network, EventLoop& loop, MessageBox& messageBox, HostForms forms,
                 Facilities facilities)
    : messageBox(messageBox),
      forms(forms),
      services{std::move(facilities), values, *this},
      host{services, forms.tray, network, loop},
      ChangeSong(loop.makeTimer()),
      Winsock1(network.makeWinsock()) {
    Winsock1->ConnectionRequest = [this](RequestId requestID) {
        Winsock1_ConnectionRequest(requestID);
    };
    ChangeSong->tick = [this] { ChangeSong_Timer(); };
    services.player.changed = [this] { ChangeSong->wake(); };
}

frmMain::Start frmMain::Load() {
    forms.tray.Show(mnupopup());
    services.notes.load();
    forms.title.Load();
    ChangeSong->enable(songInterval);
    if (const auto trouble = Winsock1->Listen(listeningPort)) {
        if (trouble->number == SocketTrouble::addressInUse) {
            messageBox.critical("Please do not run multiple instances of Cobweave."sv);
            forms.tray.Unload();
            return Start::SecondCopy;
        }
        messageBox.critical("Error: " + trouble->description);
        return Start::Deaf;
    }
    if (!isSet(services.settings, options::useristyping)) forms.options.ShowFirstRun();
    return Start::Listening;
}

/// There is no entry to quit: those who want that have "!forceexit".
std::vector<MenuEntry> frmMain::mnupopup() {
    return {{"mnuhelp", "&Help...", [this] { forms.help.Show(); }},
            {"mnuoptions", "&Options...", [this] { forms.options.Show(); }},
            {"mnubar", "-", {}},
            {"mnunotes", "&Notes...", [this] { forms.notes.Show(); }},
            {"mnulog", "&Log...", [this] { forms.log.Show(); }},
            {"mnubar2", "-", {}},
            {"mnuabout", "&About...", [this] { forms.about.Show(); }}};
}

void frmMain::Winsock1_ConnectionRequest(RequestId requestID) {
    destroyUnloaded();
    AddControl();
    attempt([&] { MSNProxy1.at(instanceCount)->Connect(requestID); });
    attempt([&] { MSNProxy1.at(instanceCount)->SetFormID(instanceCount); });
}

void frmMain::AddControl() {
    attempt([&] { instanceCount = checked<std::int16_t>(instanceCount + 1); });
    attempt([&] { loadInstance(instanceCount); });
}

/// Fails when the number is in use.
void frmMain::loadInstance(std::int16_t Index) {
    if (MSNProxy1.contains(Index)) throw Failure("the instance exists already");
    auto instance = std::make_unique<MSNProxy>(host);
    instance->popup = [this](std::string_view text) { forms.popups.popup(text); };
    instance->log = [this](std::string_view text) { MSNProxy1_log(text); };
    instance->FreePort = [this, Index] { MSNProxy1_FreePort(Index); };
    MSNProxy1.emplace(Index, std::move(instance));
}

void frmMain::MSNProxy1_FreePort(std::int16_t Index) {
    const auto found = MSNProxy1.find(Index);
    found->second->Unload();
    destroyUnloaded();
    unloaded.push_back(std::move(found->second));
    MSNProxy1.erase(found);
    if (Index != values.serverID) return;
    forms.title.setwindowcaption(forms.title.restingTitle());
    values.loggedin = false;
    values.serverID = 0;
    std::string caption = "Cobweave";
    forms.tray.changetraycaption(caption);
}

void frmMain::MSNProxy1_log(std::string_view text) { forms.log.AddItem(removeAll(text, "\r\n"sv)); }

void frmMain::ChangeSong_Timer() {
    // Until the player changes there is nothing to see.
    ChangeSong->rest();
    currentSong = winamp::CurrentSong(services.player);
    if (currentSong == lastSong) return;
    lastSong = winamp::CurrentSong(services.player);
    if (!values.winampOn) return;
    std::string nick =
        values.winampPrefix + (currentSong.empty() ? " Nothing." : " " + currentSong);
    ApplyNickTemplate(nick);
}

void frmMain::ApplyNickTemplate(std::string& text) {
    text = messageConstants::expandNickName(text, services);
    if (values.serverID == 0) return;
    const auto found = MSNProxy1.find(values.serverID);
    if (found == MSNProxy1.end()) throw Failure("the notification-server connection is gone");
    found->second->ChangeNick(mdlFunctions::UrlEncode(text));
}

void frmMain::ForceExit() {
    forms.tray.Unload();
    endProcess();
    std::abort();
}

/// An instance that ends does so in an event of its own; it is destroyed in a later one.
void frmMain::destroyUnloaded() {
    std::erase_if(unloaded, [](const auto& instance) { return !instance->isInEvent(); });
}

#include "proxy/frmMain.h"

#include "base/Failure.h"
#include "conversation/messageConstants.h"
#include "desktop/mdlFunctions.h"
#include "desktop/winamp.h"
#include "platform/MediaPlayer.h"
#include "platform/MessageBox.h"
#include "stores/NotesStore.h"
#include "stores/options.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <utility>

using namespace std::string_view_literals;

namespace {

constexpr std::chrono::milliseconds songInterval{1000};

/// Numbers have 16 bits. At this one the user is asked, in time, to start the program anew.
constexpr std::int16_t fewNumbersLeft = 30000;

}  // namespace

frmMain::frmMain(Network& network, EventLoop& loop, MessageBox& messageBox, Facilities facilities)
    : messageBox(messageBox),
      services{std::move(facilities), values, *this, windows},
      host{services, network, loop, queues, {}},
      ChangeSong(loop.makeTimer()),
      Winsock1(network.makeWinsock()) {
    Winsock1->ConnectionRequest = [this](RequestId requestID) {
        Winsock1_ConnectionRequest(requestID);
    };
    ChangeSong->tick = [this] { ChangeSong_Timer(); };
    services.player.changed = [this] { ChangeSong->wake(); };
}

frmMain::~frmMain() { services.player.changed = {}; }

frmMain::Start frmMain::Load() {
    windows.showTrayIcon(mnupopup());
    services.notes.load();
    windows.loadTitle();
    ChangeSong->enable(songInterval);
    if (const auto problem = Winsock1->Listen(listeningPort)) {
        if (problem->number == SocketTrouble::addressInUse) {
            // The line comes before the box, which waits for its answer.
            trouble("port " + std::to_string(listeningPort) + " is taken; \"" + problem->question +
                    "\" says by which program");
            messageBox.critical("Please do not run multiple instances of Cobweave."sv);
            windows.removeTrayIcon();
            return Start::SecondCopy;
        }
        messageBox.critical("Error: " + problem->description);
        return Start::NotListening;
    }
    // Each OK of the options saves this switch, be it on or off: without a value none was pressed
    // yet.
    if (!isSet(services.settings, options::useristyping)) windows.showFirstRun();
    return Start::Listening;
}

/// There is no entry to quit; the chat command "!forceexit" does that.
std::vector<MenuEntry> frmMain::mnupopup() {
    return {{"mnuhelp", "&Help...", [this] { windows.showHelp(); }},
            {"mnuoptions", "&Options...", [this] { windows.showOptions(); }},
            {"mnubar", "-", {}},
            {"mnunotes", "&Notes...", [this] { windows.showNotes(); }},
            {"mnulog", "&Log...", [this] { windows.showLog(); }},
            {"mnubar2", "-", {}},
            {"mnuabout", "&About...", [this] { windows.showAbout(); }}};
}

void frmMain::Winsock1_ConnectionRequest(RequestId requestID) {
    // Any web page can make a browser connect and say what it likes behind the head of its own
    // protocol, so whoever does not begin as a client is none.
    if (!MSNProxy::isClient(Winsock1->PeekData())) return;
    destroyUnloaded();
    AddControl();
    MSNProxy& instance = *MSNProxy1.at(instanceCount);
    instance.Connect(requestID);
    instance.SetFormID(instanceCount);
}

void frmMain::AddControl() {
    if (instanceCount < std::numeric_limits<std::int16_t>::max()) ++instanceCount;
    if (instanceCount == fewNumbersLeft) {
        constexpr std::string_view text =
            "Please start Cobweave again soon: it has served 30000 connections, and from 32767 on "
            "each new one ends another";
        windows.popup(text);
        trouble(text);
    }
    if (!MSNProxy1.contains(instanceCount)) loadInstance(instanceCount);
}

void frmMain::loadInstance(std::int16_t Index) {
    auto instance = std::make_unique<MSNProxy>(host);
    instance->unreachable = [this](std::string_view server) { MSNProxy1_unreachable(server); };
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
    windows.restoreTitle();
    values.loggedin = false;
    values.serverID = 0;
    std::string caption = "Cobweave";
    windows.changetraycaption(caption);
}

/// Reports each server once: a client tries again and again.
void frmMain::MSNProxy1_unreachable(std::string_view server) {
    constexpr std::size_t most = 64;
    if (std::ranges::find(unreachableServers, server) != unreachableServers.end()) return;
    if (unreachableServers.size() == most) unreachableServers.pop_front();
    unreachableServers.emplace_back(server);
    windows.popup("The server " + std::string(server) + " could not be reached.");
}

void frmMain::ChangeSong_Timer() {
    // Nothing changes until the player does.
    ChangeSong->rest();
    currentSong = winamp::CurrentSong(services.player);
    if (currentSong == lastSong) return;
    // Asked again: a song that begins between the two answers counts as known, and the nick name
    // keeps the one before until the next change.
    lastSong = winamp::CurrentSong(services.player);
    if (!values.winampOn) return;
    std::string nick =
        values.winampPrefix + (currentSong.empty() ? " Nothing." : " " + currentSong);
    // A server that drops the connection in this moment leaves the nick name to the next song.
    attempt([&] { ApplyNickTemplate(nick); });
}

void frmMain::ApplyNickTemplate(std::string& text) {
    text = messageConstants::expandNickName(text, services);
    if (values.serverID == 0) return;
    const auto found = MSNProxy1.find(values.serverID);
    if (found == MSNProxy1.end()) throw Failure("the notification-server connection is gone");
    found->second->ChangeNick(need(mdlFunctions::UrlEncode(text), "the nick name is too long"));
}

void frmMain::ForceExit() {
    windows.removeTrayIcon();
    endProcess();
    std::abort();
}

/// An instance ends in an event of its own, so it is destroyed in a later one.
void frmMain::destroyUnloaded() {
    std::erase_if(unloaded, [](const auto& instance) { return !instance->isInEvent(); });
}

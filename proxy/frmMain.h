#pragma once

#include "base/Event.h"
#include "conversation/Conversation.h"
#include "conversation/ProgramWindows.h"
#include "platform/Winsock.h"
#include "proxy/MSNProxy.h"
#include "proxy/SendQueues.h"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

class MessageBox;

/// The host of the proxy: owns the listening socket, the connections and the values that belong to
/// the whole process. It is never shown and lives until the process ends.
class frmMain final : private ProgramActions {
public:
    /// The port where clients find the proxy, on all addresses of the machine.
    static constexpr std::uint16_t listeningPort = 1090;

    /// How the start ended.
    enum class Start {
        Listening,     ///< clients can connect
        NotListening,  ///< the port is not available; a box has said so, and the rest goes on
        SecondCopy,    ///< another copy has the port; a box has said so, and the process has to end
    };

    /// What all connections share.
    ProcessValues values;

    /// The windows, which are connected before `Load`.
    ProgramWindows windows;
    /// Something is wrong that the user can mend; one line says what.
    Event<std::string_view> trouble;
    /// Ends the process at once with status 0. Does not return.
    Event<> endProcess;

    /// Does nothing before `Load`. All that is given has to outlive it.
    frmMain(Network& network, EventLoop& loop, MessageBox& messageBox, Facilities facilities);
    frmMain(const frmMain&) = delete;
    frmMain& operator=(const frmMain&) = delete;
    ~frmMain() override;

    /// Shows the tray icon with the program's menu, begins to listen and opens the options on a
    /// first run.
    [[nodiscard]] Start Load();

    /// Creates the instance of the next number. When no number is left, the last one stays in use.
    void AddControl();

    /// Puts a new song into the nick name, if the user wants that and the server can be asked.
    void ChangeSong_Timer();

    /// The instances in use, by number.
    [[nodiscard]] const std::map<std::int16_t, std::unique_ptr<MSNProxy>>& instances() const {
        return MSNProxy1;
    }

private:
    void ApplyNickTemplate(std::string& text) override;
    [[noreturn]] void ForceExit() override;

    [[nodiscard]] std::vector<MenuEntry> mnupopup();
    void Winsock1_ConnectionRequest(RequestId requestID);
    void MSNProxy1_FreePort(std::int16_t Index);
    void MSNProxy1_unreachable(std::string_view server);
    void loadInstance(std::int16_t Index);
    void destroyUnloaded();

    MessageBox& messageBox;
    Services services;
    SendQueues queues;
    ProxyHost host;
    std::int16_t instanceCount = 0;
    std::string currentSong;
    /// The song when the timer last saw a change.
    std::string lastSong;
    std::unique_ptr<Timer> ChangeSong;
    std::unique_ptr<Winsock> Winsock1;
    std::map<std::int16_t, std::unique_ptr<MSNProxy>> MSNProxy1;
    /// The servers that were reported last.
    std::deque<std::string> unreachableServers;
    /// Instances that are no longer in use, some of them with an event that is still running.
    std::vector<std::unique_ptr<MSNProxy>> unloaded;
};

#pragma once

#include "conversation/ProcessValues.h"
#include "platform/Winsock.h"
#include "proxy/MSNProxy.h"
#include "proxy/ProxyHost.h"
#include "proxy/hostForms.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

class EventLoop;
class MessageBox;
class SettingsStore;

/// The host of the proxy: owns the listening socket, the connections and the values that belong to
/// the whole process. It is never shown and lives until the process ends.
class frmMain {
public:
    /// Where clients find the proxy, on all addresses of the machine.
    static constexpr std::uint16_t listeningPort = 1090;

    enum class Start {
        Listening,   ///< clients can connect
        Deaf,        ///< the port could not be had; the user was told, the rest goes on
        SecondCopy,  ///< another copy has the port; the user was told, the process is to end
    };

    ProcessValues values;

    frmMain(Network& network, EventLoop& loop, SettingsStore& settings, MessageBox& messageBox,
            HostForms forms);

    /// Shows the tray icon, begins to listen and opens the options on a first run.
    [[nodiscard]] Start Load();

    /// Creates the instance of the next number. Statement by statement: when no number is left, the
    /// last one stays.
    void AddControl();

    /// The instances in use, by number.
    [[nodiscard]] const std::map<std::int16_t, std::unique_ptr<MSNProxy>>& instances() const {
        return MSNProxy1;
    }

private:
    void Winsock1_ConnectionRequest(RequestId requestID);
    void MSNProxy1_FreePort(std::int16_t Index);
    void MSNProxy1_log(std::string_view text);
    void loadInstance(std::int16_t Index);
    void destroyUnloaded();

    SettingsStore& settings;
    MessageBox& messageBox;
    HostForms forms;
    ProxyHost host;
    std::int16_t instanceCount = 0;
    std::unique_ptr<Winsock> Winsock1;
    std::map<std::int16_t, std::unique_ptr<MSNProxy>> MSNProxy1;
    /// Instances that are no longer in use and wait for their running event to return.
    std::vector<std::unique_ptr<MSNProxy>> unloaded;
};

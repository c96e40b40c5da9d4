#include "bench/desktop/Desk.h"

#include "tests/support/Peer.h"
#include "tests/support/storedSettings.h"

#include <stdexcept>

namespace {

void turnEverythingOn(const std::filesystem::path& folder) {
    writeSettings(folder, storedOptions({{"alertoffline", "True"},
                                         {"alertclosewindow", "True"},
                                         {"alertopenwindow", "True"},
                                         {"alertjoinwindow", "True"},
                                         {"progress", "1"},
                                         {"trayicon", "1"},
                                         {"messengerwindow", "1"},
                                         {"useristyping", "False"}}));
}

}  // namespace

Desk::Desk()
    : tray({"env", "DISPLAY=" + display.name(), "trayer", "--edge", "top", "--align", "left",
            "--widthtype", "request", "--height", "24"}) {
    if (!becomesTrue([&] { return display.runs("xdotool search --class trayer"); })) {
        throw std::runtime_error("no notification area");
    }
    program = std::make_unique<Program>(Program::Options{
        .environment = {{"DISPLAY", display.name()}, {"DBUS_SESSION_BUS_ADDRESS", "disabled:"}},
        .prepare = turnEverythingOn});
    program->waitUntilReady();
}

void Desk::choose(const std::string& key, const std::string& title) {
    run("xdotool mousemove 12 12 sleep 0.5 click 3 sleep 0.5 key " + key);
    display.waitForWindow(title);
}

void Desk::run(const std::string& command) const {
    if (!display.runs(command)) throw std::runtime_error("failed: " + command);
}

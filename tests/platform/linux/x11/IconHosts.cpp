#include "tests/platform/linux/x11/IconHosts.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace {

constexpr const char* panelSettings = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=8;x=512;y=750"/>
      <property name="length" type="uint" value="100"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray"/>
  </property>
</channel>
)";

/// The program that keeps the panel's settings, wherever the system has it.
std::string settingsProgram() {
    std::ifstream service("/usr/share/dbus-1/services/org.xfce.Xfconf.service");
    const std::string key = "Exec=";
    for (std::string line; std::getline(service, line);) {
        if (line.starts_with(key)) return line.substr(key.size());
    }
    throw std::runtime_error("xfconf is not there");
}

constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
constexpr const char* watcherPath = "/StatusNotifierWatcher";

QDBusConnection connectAnew() {
    static int count = 0;
    return QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                         "watcher " + QString::number(++count));
}

}  // namespace

Panel::Panel() {
    const auto place = files.path() / "xfce4/xfconf/xfce-perchannel-xml";
    std::filesystem::create_directories(place);
    std::ofstream(place / "xfce4-panel.xml") << panelSettings;
    settings = Child({settingsProgram()});
    start();
}

ScriptedWatcher::ScriptedWatcher() : connection(connectAnew()) {
    if (!connection.registerVirtualObject(watcherPath, this) ||
        !connection.registerService(watcherName)) {
        throw std::runtime_error("the watcher does not start");
    }
}

ScriptedWatcher::~ScriptedWatcher() { QDBusConnection::disconnectFromBus(connection.name()); }

void ScriptedWatcher::addHost() {
    hasHost = true;
    connection.send(
        QDBusMessage::createSignal(watcherPath, watcherName, "StatusNotifierHostRegistered"));
}

bool ScriptedWatcher::handleMessage(const QDBusMessage& message, const QDBusConnection& from) {
    if (message.member() != "Get") return false;
    ++calls;
    if (answers) from.send(message.createReply(QVariant::fromValue(QDBusVariant(hasHost))));
    return true;
}

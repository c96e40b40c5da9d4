#pragma once

#include "tests/support/Child.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Variable.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

/// A panel that shows icons that are announced on the session bus of the environment: Xfce's, with
/// nothing but icons on it.
class Panel {
public:
    Panel() {
        const auto place = files.path() / "xfce4/xfconf/xfce-perchannel-xml";
        std::filesystem::create_directories(place);
        std::ofstream(place / "xfce4-panel.xml") << configuration;
        settings = Child({settingsProgram()});
        start();
    }
    void end() { panel = Child(); }
    void start() { panel = Child({"xfce4-panel", "--disable-wm-check"}); }

private:
    /// The program that keeps the panel's settings, wherever the system has it.
    static std::string settingsProgram() {
        std::ifstream service("/usr/share/dbus-1/services/org.xfce.Xfconf.service");
        const std::string key = "Exec=";
        for (std::string line; std::getline(service, line);) {
            if (line.starts_with(key)) return line.substr(key.size());
        }
        throw std::runtime_error("xfconf is not there");
    }

    static constexpr const char* configuration = R"(<?xml version="1.0" encoding="UTF-8"?>
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

    TemporaryFolder files;
    Variable configurationFolder{"XDG_CONFIG_HOME", files.path().string()};
    Child settings;
    Child panel;
};

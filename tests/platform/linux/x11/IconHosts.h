#pragma once

#include "tests/support/TemporaryFolder.h"
#include "tests/support/Variable.h"
#include "tests/support/linux/Child.h"

#include <QDBusConnection>
#include <QDBusVirtualObject>

/// A panel that shows icons that are announced on the session bus of the environment: Xfce's, with
/// nothing but icons on it.
class Panel {
public:
    Panel();

    /// Ends the panel, or starts it again.
    void end() { panel = Child(); }
    void start() { panel = Child({"xfce4-panel", "--disable-wm-check"}); }

private:
    TemporaryFolder files;
    Variable configurationFolder{"XDG_CONFIG_HOME", files.path().string()};
    Child settings;
    Child panel;
};

/// The keeper of the list of icons on the bus of the environment, which answers as a test says.
class ScriptedWatcher final : public QDBusVirtualObject {
public:
    ScriptedWatcher();
    ~ScriptedWatcher() override;
    ScriptedWatcher(const ScriptedWatcher&) = delete;
    ScriptedWatcher& operator=(const ScriptedWatcher&) = delete;

    /// Gets a host, which shows the icons, and announces it.
    void addHost();

    bool hasHost = false;
    bool answers = true;
    /// How often it was called for whether there is a host.
    int calls = 0;

    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& from) override;

private:
    QDBusConnection connection;
};

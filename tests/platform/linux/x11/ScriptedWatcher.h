#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>

/// The keeper of the list of icons on the bus of the environment, as a test wants it.
class ScriptedWatcher final : public QDBusVirtualObject {
public:
    ScriptedWatcher();
    ~ScriptedWatcher() override;
    ScriptedWatcher(const ScriptedWatcher&) = delete;
    ScriptedWatcher& operator=(const ScriptedWatcher&) = delete;

    /// Somebody shows the icons now, and it says so.
    void takeHost();

    bool hasHost = false;
    bool answers = true;
    /// How often it was asked whether there is a host.
    int asked = 0;

    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& from) override;

private:
    QDBusConnection connection;
};

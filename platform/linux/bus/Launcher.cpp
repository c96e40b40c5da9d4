#include "platform/Launcher.h"

#include "platform/linux/bus/ApplicationObject.h"
#include "platform/linux/bus/BusConnection.h"

#include <QString>

#include <string>

namespace {

/// The desktop calls whoever owns the program's id on the session bus.
class BusLauncher final : public Launcher {
public:
    explicit BusLauncher(std::string_view id) : id(QString::fromUtf8(id)) {
        object.activated = [this] { activated(); };
        object.actionChosen = [this](const QString& name) { actionChosen(name.toStdString()); };
    }

    void listen() override {
        if (!bus.isConnected()) return;
        // Calls may come as soon as the name is ours.
        bus.handle().registerObject('/' + QString(id).replace('.', '/').replace('-', '_'), &object,
                                    QDBusConnection::ExportAllSlots);
        // The library's own function would wait for the answer. Where another copy has the name, we
        // do not queue for it: that one is reached, as long as it runs.
        constexpr uint doNotQueue = 4;
        auto call = BusConnection::callOfBus("RequestName");
        call << id << doNotQueue;
        bus.call(call, [](const QDBusMessage& /*answer*/) {});
    }

private:
    const QString id;
    ApplicationObject object;
    BusConnection bus;
};

}  // namespace

std::unique_ptr<Launcher> makeLauncher(std::string_view id) {
    return std::make_unique<BusLauncher>(id);
}

#include "platform/TrayHost.h"
#include "platform/linux/bus/StatusNotifierSearch.h"
#include "platform/linux/x11/X11Client.h"

#include <QMetaObject>
#include <QObject>

#include <memory>

namespace {

/// There are two kinds of places: a host that is found over the session bus, and the older one, a
/// window of a panel that owns a selection of the X server and takes icons in as its children. Qt
/// decides between them when its first icon is made, by what it finds then, and for good.
class LinuxTrayHost final : public TrayHost {
public:
    void search() override {
        if (bus != nullptr || isTold) return;
        listener = std::make_unique<X11Client>();
        listener->event = [this](const xcb_generic_event_t& event) { hear(event); };
        if (listener->isConnected()) {
            listener->select(listener->root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
            listener->flush();
        }
        bus = std::make_unique<StatusNotifierSearch>();
        bus->changed = [this] { decide(); };
        bus->search();
    }

private:
    using State = StatusNotifierSearch::State;

    void hear(const xcb_generic_event_t& event) {
        if (x11TypeOf(event) != XCB_CLIENT_MESSAGE) return;
        const auto& message = x11EventAs<xcb_client_message_event_t>(event);
        if (message.type == listener->atoms().manager && message.format == 32 &&
            message.data.data32[1] == listener->atoms().netSystemTray) {
            decide();
        }
    }

    void decide() {
        if (bus->state() == State::Host) return tell();
        // Where the bus or the watcher does not answer, Qt would ask it all the same, and wait.
        if (bus->state() != State::Nobody || !listener->isConnected()) return;
        const auto cookie =
            xcb_get_selection_owner(listener->handle(), listener->atoms().netSystemTray);
        listener->request<xcb_get_selection_owner_reply_t>(cookie, [this](const auto* reply) {
            if (reply != nullptr && reply->owner != 0 && bus->state() == State::Nobody) tell();
        });
        listener->flush();
    }

    void tell() {
        if (std::exchange(isTold, true)) return;
        // From the loop, when nothing of what has been found is on its way any more.
        QMetaObject::invokeMethod(
            &context,
            [this] {
                bus.reset();
                listener.reset();
                found();
            },
            Qt::QueuedConnection);
    }

    std::unique_ptr<X11Client> listener;
    std::unique_ptr<StatusNotifierSearch> bus;
    bool isTold = false;
    QObject context;
};

}  // namespace

std::unique_ptr<TrayHost> makeTrayHost() { return std::make_unique<LinuxTrayHost>(); }

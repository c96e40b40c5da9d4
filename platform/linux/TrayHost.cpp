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
        if (bus != nullptr || isFound) return;
        x11 = std::make_unique<X11Client>();
        x11->event = [this](const xcb_generic_event_t& event) { onEvent(event); };
        if (x11->isConnected()) {
            x11->select(x11->root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
            x11->flush();
        }
        bus = std::make_unique<StatusNotifierSearch>();
        bus->changed = [this] { decide(); };
        bus->search();
    }

private:
    using State = StatusNotifierSearch::State;

    void onEvent(const xcb_generic_event_t& event) {
        if (x11TypeOf(event) != XCB_CLIENT_MESSAGE) return;
        const auto& message = x11EventAs<xcb_client_message_event_t>(event);
        if (message.type == x11->atoms().manager && message.format == 32 &&
            message.data.data32[1] == x11->atoms().netSystemTray) {
            decide();
        }
    }

    void decide() {
        if (bus->state() == State::Host) return finish();
        // Where the bus or the watcher does not answer, Qt would call it all the same, and block.
        if (bus->state() != State::NoHost || !x11->isConnected()) return;
        const auto cookie = xcb_get_selection_owner(x11->handle(), x11->atoms().netSystemTray);
        x11->request<xcb_get_selection_owner_reply_t>(cookie, [this](const auto* reply) {
            if (reply != nullptr && reply->owner != 0 && bus->state() == State::NoHost) finish();
        });
        x11->flush();
    }

    void finish() {
        if (std::exchange(isFound, true)) return;
        // This goes through the loop: what has found the place is not destroyed within its own
        // event.
        QMetaObject::invokeMethod(
            &context,
            [this] {
                bus.reset();
                x11.reset();
                found();
            },
            Qt::QueuedConnection);
    }

    std::unique_ptr<X11Client> x11;
    std::unique_ptr<StatusNotifierSearch> bus;
    bool isFound = false;
    QObject context;
};

}  // namespace

std::unique_ptr<TrayHost> makeTrayHost() { return std::make_unique<LinuxTrayHost>(); }

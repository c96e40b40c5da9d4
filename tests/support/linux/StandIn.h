#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <xcb/xcb.h>

/// Another program on an X server, with windows as a test needs them. Its calls return when the
/// server has done what they ask for.
class StandIn {
public:
    /// What a window has when it is shown for the first time.
    struct Look {
        /// As WM_CLASS has it: instance and class.
        std::string instance;
        std::string className;
        std::optional<std::string> title = std::nullopt;
        std::string type = {};
        xcb_window_t transientFor = 0;
        /// Window managers leave it alone.
        bool isOverrideRedirect = false;
        bool isClosable = false;

        /// A window of Messenger under Wine.
        [[nodiscard]] static Look ofMessenger(const std::string& title) {
            return {"msnmsgr.exe", "msnmsgr.exe", title};
        }
    };

    /// On the display of the environment, or on one that is named as DISPLAY has it.
    explicit StandIn(const std::string& display = "");
    ~StandIn();
    StandIn(const StandIn&) = delete;
    StandIn& operator=(const StandIn&) = delete;

    [[nodiscard]] xcb_window_t open(const Look& look);
    void hide(xcb_window_t window);
    void show(xcb_window_t window);
    void close(xcb_window_t window);
    void raise(xcb_window_t window);
    /// The top left corner comes there, in the screen's pixels.
    void move(xcb_window_t window, int left, int top);
    void focus(xcb_window_t window);
    void setTitle(xcb_window_t window, std::string_view title);
    void setClass(xcb_window_t window, std::string_view instance, std::string_view className);
    void setNumbers(xcb_window_t window, const std::string& name, xcb_atom_t type,
                    const std::vector<std::uint32_t>& numbers);
    void remove(xcb_window_t window, const std::string& name);
    /// Becomes the owner of a selection, and does nothing with it.
    void takeSelection(const std::string& selection);
    /// Asks the window manager for something, by a message about a window.
    void sendToRoot(xcb_window_t window, const std::string& type,
                    const std::vector<std::uint32_t>& numbers);

    [[nodiscard]] xcb_window_t root() const { return screenRoot; }
    [[nodiscard]] xcb_atom_t atom(const std::string& name);
    /// Whether a window manager has the window in its list.
    [[nodiscard]] bool isListed(xcb_window_t window);
    /// A window manager decides on what is shown.
    [[nodiscard]] bool isManaged();
    /// It and all that it lies in are shown.
    [[nodiscard]] bool isViewable(xcb_window_t window);
    /// A property's bytes; nothing where there is none.
    [[nodiscard]] std::optional<std::string> bytes(xcb_window_t window, const std::string& name);
    [[nodiscard]] std::string typeOf(xcb_window_t window, const std::string& name);
    [[nodiscard]] std::vector<std::uint32_t> numbers(xcb_window_t window, const std::string& name);
    [[nodiscard]] xcb_window_t focused();
    /// Of a selection.
    [[nodiscard]] xcb_window_t ownerOf(const std::string& selection);
    /// The child of the root window that is on top at a place.
    [[nodiscard]] xcb_window_t topAt(int left, int top);
    [[nodiscard]] xcb_get_geometry_reply_t geometry(xcb_window_t window);
    /// How many windows have this property, of those that are not children of the root window.
    [[nodiscard]] int countBelowTop(const std::string& name);
    /// A message of this type has come to one of its windows; its first number.
    [[nodiscard]] std::optional<std::uint32_t> message(const std::string& type);

private:
    /// Waits until the server has done all that was requested before.
    void sync();
    [[nodiscard]] std::vector<xcb_window_t> childrenOf(xcb_window_t window);
    void setText(xcb_window_t window, xcb_atom_t name, xcb_atom_t type, std::string_view text);

    xcb_connection_t* connection;
    xcb_window_t screenRoot = 0;
};

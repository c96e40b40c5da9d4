#include "desktop/frmTray.h"

#include "desktop/frmTitle.h"
#include "stores/options.h"

#include <algorithm>
#include <array>
#include <string_view>

using namespace std::string_view_literals;

namespace {

/// How many characters fit into a tool-tip.
constexpr std::size_t tipLength = 64;

/// How far the sign-in has come when a command of this name passes.
struct Step {
    std::string_view word;
    std::string_view text;
    std::string_view percent;
};

constexpr std::array steps{
    Step{"LST", "Processing contact list.", "75%"},
    Step{"ILN", "Processing online list.", "90%"},
    Step{"CHG", "Processing online list.", "95%"},
    Step{"VER", "Processing version command.", "5%"},
    Step{"CVR", "Processing Messenger version command.", "10%"},
    Step{"USR", "Processing user information.", "15%"},
    Step{"MSG", "Processing user information.", "35%"},
    Step{"GTC", "Processing user information.", "25%"},
    Step{"SYN", "Synchronizing.", "30%"},
};

std::string captionText(std::string_view text, std::string_view gap, std::string_view progress) {
    return std::string(text).append(gap).append(progress);
}

}  // namespace

void frmTray::Show(const std::vector<MenuEntry>& menu) { tray.add("Cobweave", menu); }

void frmTray::Unload() { tray.remove(); }

void frmTray::changetraycaption(std::string& newcaption, bool loggedin) {
    if (!isOn(settings, options::progress)) return;
    const bool shown = isOn(settings, options::trayicon);
    newcaption = captionOf(newcaption, loggedin);
    if (shown) tray.modify(std::string_view(newcaption).substr(0, tipLength));
}

/// Writes the title of Messenger's window as well, where the word has something for it.
std::string frmTray::captionOf(const std::string& word, bool loggedin) {
    if (word == "XFR") {
        // A transfer to the next server is no step of the sign-in, so the title stays as it is.
        if (loggedin) return word;
        return captionText("Processing transfer command.", "\r\n\r\n", "Suggested progress: 10%");
    }
    if (word == "Cobweave") {
        title.setwindowcaption(title.renameText());
        return word;
    }
    if (word == "OUT") {
        title.restore();
        return word;
    }
    const auto* const step = std::ranges::find(steps, word, &Step::word);
    if (step == steps.end()) {
        title.setwindowcaption("Suggested signin progress: 95%");
        return captionText("Processing other information.", "\r\n\r\n",
                           "Suggested signin progress: 95%");
    }
    title.setwindowcaption(captionText("Suggested signin progress: ", "", step->percent));
    // Three commands have this sentence; this one's tool-tip is a line shorter.
    const auto gap = word == "GTC" ? "\r\n"sv : "\r\n\r\n"sv;
    return captionText(step->text, gap, captionText("Suggested progress: ", "", step->percent));
}

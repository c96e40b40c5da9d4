#include "base/userText.h"
#include "desktop/frmTitle.h"
#include "desktop/frmTray.h"
#include "platform/Browser.h"
#include "platform/Chance.h"
#include "platform/Client.h"
#include "platform/Clock.h"
#include "platform/Console.h"
#include "platform/Display.h"
#include "platform/Folders.h"
#include "platform/ForeignWindows.h"
#include "platform/Launcher.h"
#include "platform/MachineFacts.h"
#include "platform/MediaPlayer.h"
#include "platform/MessageBox.h"
#include "platform/OwnWindows.h"
#include "platform/Platform.h"
#include "platform/Registry.h"
#include "platform/Tray.h"
#include "platform/qt/Application.h"
#include "platform/qt/qtPlatform.h"
#include "platform/shared/systemSockets.h"
#include "proxy/firstWords.h"
#include "proxy/frmMain.h"
#include "stores/NotesStore.h"
#include "stores/SettingsStore.h"
#include "ui/about/frmabout.h"
#include "ui/common/FormHolder.h"
#include "ui/common/look.h"
#include "ui/help/frmhelp.h"
#include "ui/log/frmlog.h"
#include "ui/notes/frmnotes.h"
#include "ui/options/frmoptions.h"
#include "ui/toasts/clspopups.h"

#include <QApplication>
#include <QTimer>

#include <array>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

/// What the program answers to arguments, none of which makes it run.
int answerArguments(int argc, const char* const* argv) {
    console::prepare();
    const std::string_view argument = argv[1];
    if (argc == 2 && argument == "--version") {
        console::output("Cobweave " COBWEAVE_VERSION);
        return EXIT_SUCCESS;
    }
    if (argc == 2 && argument == "--help") {
        console::output("Usage: cobweave [--help | --version]");
        console::output("Runs the proxy that MSN Messenger 6 connects through, on port " +
                        std::to_string(frmMain::listeningPort) + ", until Ctrl+C is pressed.");
        console::output("  --help     print this and leave");
        console::output("  --version  print the version and leave");
        return EXIT_SUCCESS;
    }
    constexpr int wrongUsage = 2;
    const bool isOurs = argument == "--version" || argument == "--help";
    const std::string_view wrong = isOurs ? std::string_view(argv[2]) : argument;
    console::error("cobweave: the argument \"" + std::string(wrong) +
                   "\" is not understood; \"cobweave --help\" says which are");
    return wrongUsage;
}

void printTrouble(std::string_view text) { console::error("Cobweave: " + std::string(text) + '.'); }

/// What to enter in Messenger, and under which addresses of this moment.
std::vector<std::string> wordsOfNow() {
    std::vector<std::uint32_t> addresses;
    for (const AddressRange& network : systemSockets::ownNetworks())
        addresses.push_back(network.address);
    return firstWords(COBWEAVE_VERSION, frmMain::listeningPort, addresses);
}

void printFirstWords() {
    for (const std::string& line : wordsOfNow())
        console::output(line);
}

std::string firstWordsInOne() {
    std::string all;
    for (const std::string& line : wordsOfNow())
        all.append(all.empty() ? "" : "\n").append(line);
    return all;
}

/// The desktop has no place for the icon.
void tellOfNoPlace(clspopups& popups) {
    printTrouble(
        "this desktop has no place for an icon. Cobweave in its list of programs shows the "
        "options, and in the menu of a right click all windows. GNOME has a place with the "
        "package gnome-shell-extension-appindicator");
    popups.popup(
        "This desktop has no place for the icon. Click Cobweave in its list of programs for "
        "the options, right-click it there for the rest.");
}

/// A launcher reaches the windows that `windows` shows, and the end of the program.
void connectLauncher(Launcher& launcher, const ProgramWindows& windows, const Event<>& end) {
    launcher.activated = windows.showOptions;
    launcher.actionChosen = [actions = std::map<std::string_view, Event<>>{
                                 {"options", windows.showOptions},
                                 {"help", windows.showHelp},
                                 {"notes", windows.showNotes},
                                 {"log", windows.showLog},
                                 {"about", windows.showAbout},
                                 {"quit", end},
                             }](std::string_view name) {
        if (const auto chosen = actions.find(name); chosen != actions.end()) chosen->second();
    };
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc > 1) return answerArguments(argc, argv);
    prepareProcess();
    Application::sendMessagesToConsole();
    FoundDisplay display = findDisplay();
    const bool withWindows = !display.whyWithoutWindows;
    if (!withWindows) printTrouble(*display.whyWithoutWindows + ", so it runs without windows");
    // As an argument: it overrides what the desktop may have set for all its programs, and unlike
    // the environment the browser does not inherit it.
    std::string option = "-platform";
    std::string platformName = qtPlatform(withWindows);
    std::array arguments{argv[0], option.data(), platformName.data()};
    int count = arguments.size();
    Application application(count, arguments.data());
    display.connection.reset();
    QApplication::setApplicationName("Cobweave");
    QApplication::setApplicationVersion(COBWEAVE_VERSION);
    QApplication::setQuitOnLastWindowClosed(false);
    look::apply();

    const std::unique_ptr<Platform> platform = makePlatform();
    const auto end = [] { QApplication::exit(EXIT_SUCCESS); };
    platform->endRequested = end;
    const std::unique_ptr<MessageBox> messageBox =
        withWindows ? makeMessageBox() : makeMessageBoxWithoutWindows();
    const std::unique_ptr<MachineFacts> machine = makeMachineFacts();
    const std::unique_ptr<Clock> clock = makeClock();
    const std::unique_ptr<Chance> chance = makeChance();
    const std::unique_ptr<Registry> registry = makeRegistry();
    const std::unique_ptr<MediaPlayer> player = makeMediaPlayer();
    const std::unique_ptr<Browser> browser = makeBrowser();
    const std::unique_ptr<Client> client = makeClient();

    SettingsStore settings(folders::settings() / "Cobwaeve" / "settings.db", printTrouble);
    settings.maintain(platform->loop());
    const std::unique_ptr<ForeignWindows> otherWindows = makeForeignWindows();
    const std::unique_ptr<OwnWindows> ownWindows = makeOwnWindows();
    const std::unique_ptr<Tray> trayIcon = makeTray();
    clspopups popups(platform->loop(), *ownWindows, *otherWindows);
    NotesStore notes(folders::notes() / "notes.cwv", [&](std::string_view text) {
        printTrouble(userText::shown(text));
        if (withWindows) messageBox->notify(std::string(text) + '.');
    });
    frmTitle title(settings, *otherWindows, platform->loop());
    frmTray tray(settings, title, *trayIcon);
    FormHolder<frmhelp> help(FormLife::UntilClosed);
    FormHolder<frmoptions> options(FormLife::UntilClosed, [&] {
        return std::make_unique<frmoptions>(
            frmoptions::Parts{settings, title, *registry, *messageBox, *otherWindows, *client,
                              *clock, firstWordsInOne(), [&help] { help.Show(); }});
    });
    FormHolder<frmnotes> notesForm(FormLife::WholeRun,
                                   [&] { return std::make_unique<frmnotes>(notes, *messageBox); });
    FormHolder<frmlog> log(FormLife::WholeRun,
                           [&] { return std::make_unique<frmlog>(*clock, *messageBox); });
    FormHolder<frmabout> about(FormLife::UntilClosed,
                               [] { return std::make_unique<frmabout>(firstWordsInOne()); });

    frmMain host(platform->network(), platform->loop(), *messageBox,
                 {settings, *machine, *clock, *chance, *registry, *player, *browser, notes,
                  commandLine(argc, argv)});
    host.trouble = printTrouble;
    host.endProcess = [] { std::_Exit(EXIT_SUCCESS); };
    ProgramWindows& windows = host.windows;
    windows.showTrayIcon = [&tray](const auto& menu) { tray.Show(menu); };
    windows.removeTrayIcon = [&tray] { tray.Unload(); };
    windows.changetraycaption = [&tray, &host](std::string& newcaption) {
        tray.changetraycaption(newcaption, host.values.loggedin);
    };
    windows.loadTitle = [&title] { title.Load(); };
    windows.restoreTitle = [&title] { title.restore(); };
    // What nobody can see is not made: a first run would not end before its options are confirmed,
    // and a log would only grow.
    if (withWindows) {
        windows.showHelp = [&help] { help.Show(); };
        windows.showOptions = [&options] { options.Show(); };
        windows.showFirstRun = [&options] {
            options.load().RestartMessenger = true;
            options.Show();
        };
        windows.showNotes = [&notesForm] { notesForm.Show(); };
        windows.showLog = [&log] { log.Show(); };
        windows.showAbout = [&about] { about.Show(); };
        windows.addToLog = [&log](std::string_view text) { log.load().AddItem(text); };
        windows.popup = [&popups](std::string_view text) { popups.popup(text); };
        trayIcon->noPlace = [&popups] { tellOfNoPlace(popups); };
    }

    const std::unique_ptr<Launcher> launcher = makeLauncher(COBWEAVE_ID);
    connectLauncher(*launcher, windows, end);

    // Within the loop, so that the program can be ended while a box at start-up is open.
    QTimer::singleShot(0, [&host, &launcher = *launcher] {
        const frmMain::Start start = host.Load();
        if (start == frmMain::Start::SecondCopy) return QApplication::exit(EXIT_FAILURE);
        if (start == frmMain::Start::Listening) printFirstWords();
        launcher.listen();
    });
    return QApplication::exec();
}

#include "tests/demo/Stage.h"
#include "tests/support/linux/Program.h"
#include "tests/support/messages.h"
#include "tests/support/storedSettings.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <thread>

namespace {

Stage connection() { return Stage(Relay::through(Program::port)); }

/// What the program needs of this environment to be seen; nothing without a display.
Program::Environment desktop() {
    Program::Environment variables;
    if (std::getenv("DISPLAY") == nullptr) return variables;
    for (const char* const name : {"DISPLAY", "XAUTHORITY", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR",
                                   "DBUS_SESSION_BUS_ADDRESS"}) {
        if (const char* const value = std::getenv(name)) variables[name] = value;
    }
    return variables;
}

/// The options would open by themselves, and wait to be answered.
void beNoFirstRun(const std::filesystem::path& folder) {
    writeSettings(folder, storedOptions({{"useristyping", "False"}}));
}

/// Gives those who can see the desktop the time to look there.
void waitForEyes(std::chrono::milliseconds time) {
    if (std::getenv("DISPLAY") != nullptr) std::this_thread::sleep_for(time);
}

constexpr std::chrono::milliseconds step{700};
/// As long as a toast stands.
constexpr std::chrono::milliseconds toastTime{7000};

/// Returns the notification-server connection, which stays open.
Stage showSignIn(Program& program) {
    program.setSetting("initialStatus", "Busy");
    for (const char* const key : {"progress", "trayicon", "messengerwindow"}) {
        program.setSetting(key, "1");
    }
    announce("Signing in with a status of one's own",
             "The option for the status at sign-in says \"Busy\"; the client asks for online. "
             "What changed on the way is marked with * and ^. On a desktop the tool-tip of the "
             "icon, and the title of Messenger if it runs, follow each step.");
    Stage stage = connection();
    stage.clientSends("VER 1 MSNP10 MSNP9 CVR0\r\n");
    stage.serverSends("VER 1 MSNP10\r\n");
    waitForEyes(step);
    stage.clientSends("USR 3 TWN I ann@example.com\r\n");
    stage.serverSends("USR 3 OK ann@example.com Ann%20Lee 1 0\r\n");
    waitForEyes(step);
    stage.clientSends("SYN 4 0 0\r\n");
    waitForEyes(step);
    stage.serverSends("PRP MFN Ann%20Lee\r\n");
    waitForEyes(step);
    stage.clientSends("CHG 5 NLN 268435500\r\n");
    stage.serverSends("ILN 5 NLN bob@example.com Bob 268435500\r\n");
    return stage;
}

void showTypingNotice(Program& program, Stage& stage) {
    program.setSetting("useristyping", "True");
    announce(
        "Typing without being seen",
        "The option to hide typing notices is on: the contact's client does not know the header "
        "any more.");
    stage.clientSends(
        "MSG 7 U 88\r\nMIME-Version: 1.0\r\nContent-Type: text/x-msmsgscontrol\r\n"
        "TypingUser: ann@example.com\r\n\r\n\r\n");
    program.setSetting("useristyping", "False");
}

void showAlerts(Program& program, Stage& stage) {
    for (const char* const key : {"alertopenwindow", "alertjoinwindow", "alertclosewindow"}) {
        program.setSetting(key, "True");
    }
    announce("Alerts", "A contact joins, and the words come in the contact's own name.");
    stage.serverSends("JOI bob@example.com Bob\r\n");
}

void showToasts(Program& program, Stage& notification) {
    program.setSetting("alertoffline", "True");
    announce(
        "",
        "A contact who opens a conversation or goes offline is shown in a toast, at the bottom "
        "left of the desktop, and in the log; the commands themselves pass as they are.");
    notification.serverSends("RNG 7 127.0.0.1:1863 CKI 17.21 bob@example.com Bob\r\n");
    notification.serverSends("FLN bob@example.com\r\n");
}

void showConstants(Stage& stage) {
    announce("Message constants", "A token in < > becomes its value for the contact.");
    stage.clientSends(clientText("It is <t> on <d>, up for <ut> I am <mn>, you are <cn>."));
}

void showColors(Stage& stage) {
    announce("Random colours",
             "\"!rancolor\" is a command: the server gets a message of the same "
             "number that nobody sees.");
    stage.clientSends(clientText("!rancolor", "13"));
    announce("", "From now on each message has a colour of its own.");
    stage.clientSends(clientText("Hello Bob", "14"));
    stage.clientSends(clientText("!rancolor", "15"));
}

void showNickAndNotes(Stage& stage, Stage& notification) {
    announce("A nick name by command",
             "The notification server gets the command; the contact gets a message that shows "
             "nothing.");
    stage.clientSends(clientText("!nick Ann (<ur> free)", "16"));
    notification.serverReceives();
    announce("Notes", "Kept in a file; the contact sees nothing.");
    stage.clientSends(clientText("!note buy milk\r\nand bread", "17"));
}

void showTypo(Program& program, Stage& stage) {
    program.setSetting("preventtypo", "True");
    announce("Mistyped commands", "The option against typing errors is on: they stay here.");
    stage.clientSends(clientText("!nikc Ann", "18"));
    stage.clientReceives();
}

void showStamp(Program& program, Stage& stage) {
    program.setSetting("timestamp", "True");
    program.setSetting("tsprefix", "[");
    program.setSetting("tspostfix", "]");
    announce("Timestamps", "The time of arrival stands behind what a contact says.");
    stage.serverSends(contactText("See you tomorrow"));
    program.setSetting("timestamp", "False");
}

void showLeaving(Program& program, Stage& stage) {
    announce("Leaving and coming back",
             "The last thing that a contact said is repeated when that contact next joins.");
    stage.serverSends("BYE bob@example.com\r\n");
    program.setSetting("lastthing", "True");
    Stage next = connection();
    next.serverSends("JOI bob@example.com Bob\r\n");
}

void show(Program& program) {
    Stage notification = showSignIn(program);
    Stage conversation = connection();
    showAlerts(program, conversation);
    showToasts(program, notification);
    showTypingNotice(program, conversation);
    showConstants(conversation);
    showColors(conversation);
    showNickAndNotes(conversation, notification);
    showTypo(program, conversation);
    showStamp(program, conversation);
    showLeaving(program, conversation);
}

}  // namespace

int main() {
    try {
        Program program({.environment = desktop(), .prepare = beNoFirstRun});
        say(program.waitUntilReady());
        say("This run has stores of its own, which are thrown away. Client and server are scripted "
            "and meet through port " +
            std::to_string(Program::port) + " of this machine.");
        show(program);
        waitForEyes(toastTime);
        program.signal(SIGTERM);
        return program.waitForEnd();
    } catch (const std::exception& trouble) {
        std::cerr << "The demonstration cannot go on: " << trouble.what()
                  << "\nIf another Cobweave is running, end it and try again." << std::endl;
        return EXIT_FAILURE;
    }
}

#include "tests/demo/Stage.h"
#include "tests/support/Program.h"

#include <csignal>
#include <cstdlib>
#include <exception>
#include <iostream>

namespace {

void showSignIn(Program& program) {
    program.setSetting("initialStatus", "Busy");
    announce("Signing in with a status of one's own",
             "The option for the status at sign-in says \"Busy\"; the client asks for online.\n"
             "What changed on the way is marked with * and ^.");
    Stage stage(Relay::through(Program::port));
    stage.clientSends("VER 1 MSNP10 MSNP9 CVR0\r\n");
    stage.serverSends("VER 1 MSNP10\r\n");
    stage.clientSends("USR 3 TWN I ann@example.com\r\n");
    stage.serverSends("USR 3 OK ann@example.com Ann%20Lee 1 0\r\n");
    stage.clientSends("SYN 4 0 0\r\n");
    stage.serverSends("SYN 4 0 0 2 1\r\n");
    stage.clientSends("CHG 5 NLN 268435500\r\n");
    stage.serverSends("CHG 5 BSY 268435500\r\n");
    stage.serverSends("ILN 5 NLN bob@example.com Bob 268435500\r\n");
    announce("", "Later changes of the status are the user's own and pass as they are.");
    stage.clientSends("CHG 6 NLN 268435500\r\n");
}

void showTypingNotice(Program& program) {
    program.setSetting("useristyping", "True");
    announce("Typing without being seen",
             "The option to hide typing notices is on: the contact's client does not know the header "
             "any more.");
    Stage stage(Relay::through(Program::port));
    stage.clientSends(
        "MSG 7 U 90\r\nMIME-Version: 1.0\r\nContent-Type: text/x-msmsgscontrol\r\n"
        "TypingUser: ann@example.com\r\n\r\n\r\n");
}

}  // namespace

int main() {
    try {
        Program program;
        std::cout << program.waitUntilReady() << "\n\n"
                  << "This run has a store of its own, which is thrown away. Client and server are "
                     "scripted\nand meet through port "
                  << Program::port << " of this machine.\n\n";
        showSignIn(program);
        showTypingNotice(program);
        program.signal(SIGTERM);
        return program.waitForEnd();
    } catch (const std::exception& trouble) {
        std::cerr << "The demonstration cannot go on: " << trouble.what()
                  << "\nIf another Cobweave is running, end it and try again." << std::endl;
        return EXIT_FAILURE;
    }
}

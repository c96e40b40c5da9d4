#include "conversation/chatCommands.h"

#include "base/Failure.h"
#include "base/text.h"
#include "conversation/Conversation.h"
#include "conversation/ProgramWindows.h"
#include "conversation/injection.h"
#include "conversation/messageConstants.h"
#include "conversation/messageTools.h"
#include "desktop/mdlFunctions.h"
#include "desktop/winamp.h"
#include "platform/MediaPlayer.h"
#include "stores/NotesStore.h"
#include "stores/options.h"

#include <algorithm>
#include <utility>

namespace {

struct Command;

/// A command as the user typed it, and the conversation it was typed in.
struct Typed {
    const Command& command;
    /// The first line, or the whole text for a command that takes it.
    std::string_view text;
    Conversation& conversation;
};

/// One row for each command.
struct Command {
    std::string_view word;
    void (*act)(const Typed& typed);
    /// It takes the whole text and not its first line alone.
    bool takesFullText = false;
};

/// The text without the command and the blank behind it, where they stand together.
std::string argumentOf(const Typed& typed) {
    return replaceFirst(std::string(typed.text), std::string(typed.command.word) + " ", "");
}

void showPopup(const Typed& typed, std::string_view words) {
    typed.conversation.services.windows.popup(words);
}

void changeNick(const Typed& typed) {
    std::string nick = argumentOf(typed);
    const std::string asTyped = nick;
    typed.conversation.services.program.ApplyNickTemplate(nick);
    showPopup(typed, "Changed Nick Name To:\r\n" + asTyped);
}

void addNote(const Typed& typed) {
    NotesStore& notes = typed.conversation.services.notes;
    notes.add(argumentOf(typed));
    showPopup(typed, "Note added.");
    notes.savenotes();
}

void showNotes(const Typed& typed) { typed.conversation.services.windows.showNotes(); }

void toggleRandomColors(const Typed& typed) {
    bool& on = typed.conversation.services.values.rancolorOn;
    on = !on;
    showPopup(typed, on ? "Random Message Colors On." : "Random Message Colors Off.");
}

void search(const Typed& typed, void (*site)(std::string& text, Browser& browser)) {
    std::string text = argumentOf(typed);
    site(text, typed.conversation.services.browser);
}

void forceExit(const Typed& typed) { typed.conversation.services.program.ForceExit(); }

/// Shows words in the contact's name. Abandons the command when the client is gone.
void sayAsContact(Conversation& conversation, const std::string& words, std::string_view color,
                  std::string_view effects) {
    need(injection::InjectMessage(conversation, words, color, effects), "the client is gone");
}

/// The same, once there is a contact.
void inject(const Typed& typed, const std::string& words) {
    const ConnectionRecord& connection = typed.conversation.connection;
    if (connection.contactEmail.empty() || connection.contactNick.empty()) {
        showPopup(typed, "No user in conversation.");
        return;
    }
    sayAsContact(typed.conversation, words, "000000", "B");
}

void makeMeSay(const Typed& typed) { inject(typed, argumentOf(typed)); }

void preview(const Typed& typed) { inject(typed, "Message Preview: \r\n\r\n" + argumentOf(typed)); }

void nickFollowsPlayer(const Typed& typed) {
    Services& services = typed.conversation.services;
    ProcessValues& values = services.values;
    values.prewinampnickName = values.nickname;
    values.winampPrefix = argumentOf(typed);
    values.winampOn = true;
    std::string nick = values.winampPrefix + " " + winamp::CurrentSong(services.player);
    services.program.ApplyNickTemplate(nick);
    showPopup(typed, "Winamp Nick Name On.");
}

void nickComesBack(const Typed& typed) {
    Services& services = typed.conversation.services;
    services.values.winampOn = false;
    if (services.values.prewinampnickName.empty()) {
        // An empty nick name would be one that the server never takes back.
        showPopup(typed,
                  "Winamp Nick Name Off.\r\nYour nick name stays: the one before is not known.");
        return;
    }
    services.program.ApplyNickTemplate(services.values.prewinampnickName);
    showPopup(typed, "Winamp Nick Name Off.");
}

void followOrSteerPlayer(const Typed& typed) {
    Services& services = typed.conversation.services;
    if (const int number = winamp::transportCommand(typed.text); number != 0) {
        services.player.command(services.player.WinampWindow(), number);
    } else if (services.values.winampOn) {
        nickComesBack(typed);
    } else {
        nickFollowsPlayer(typed);
    }
}

constexpr Command commands[] = {
    {"!nick", changeNick},
    {"!note", addNote, true},
    {"!notes", showNotes},
    {"!rancolor", toggleRandomColors},
    {"!rancolour", toggleRandomColors},
    {"!google", [](const Typed& typed) { search(typed, mdlFunctions::SearchGoogle); }},
    {"!dictionary", [](const Typed& typed) { search(typed, mdlFunctions::SearchDictionary); }},
    {"!forceexit", forceExit},
    {"!thesaurus", [](const Typed& typed) { search(typed, mdlFunctions::SearchThesaurus); }},
    {"!makemesay", makeMeSay},
    {"!preview", preview, true},
    {"!acronym", [](const Typed& typed) { search(typed, mdlFunctions::SearchAcronym); }},
    {"!winamp", followOrSteerPlayer},
};

/// The row of a word; null for what is no command.
const Command* commandOf(std::string_view word) {
    const auto* const found = std::ranges::find(commands, word, &Command::word);
    return found == std::end(commands) ? nullptr : found;
}

/// The chunk to go on with where there is more in it than its first message.
std::string SplitTrailingData(std::string_view message, Conversation& conversation) {
    const auto length = need(checked<std::size_t>(need(messageTools::PayloadLength(message)) +
                                                  std::int64_t(firstLine(message).size())));
    std::string first = std::string(message.substr(0, length)).append(lineEnd);
    const std::string remainder = replaceFirst(std::string(message), first, "");
    if (!need(messageTools::IsTextMessage(remainder))) return first;
    const std::string_view secondCommand = need(messageTools::FirstBodyLine(remainder));
    // The text of the second message is looked for in the process's own command line, where it is
    // not: two texts in one chunk are passed on as they came.
    const std::string_view text =
        need(messageTools::textAndRest(conversation.services.commandLine));
    return chatCommands::parse(secondCommand, text, conversation) ? first : std::string(message);
}

/// Shows, in the contact's name, that there is no such command.
void reportUnknown(std::string_view typedWord, Conversation& conversation) {
    sayAsContact(conversation, injection::boldName(typedWord, conversation) + " command not known.",
                 "ff", "");
}

/// Carries out the command in `message`, whose place a cover takes.
void filterCommand(std::string& message, Conversation& conversation) {
    Services& services = conversation.services;
    const std::string_view text = messageTools::textAndRest(message).value_or("");
    const std::string_view typed = firstLine(text);
    const auto typedWord = word(typed, 0);
    if (!typedWord) return;
    const bool known = commandOf(*typedWord) != nullptr;
    if (!known && !typed.starts_with('!')) return;
    if (!known && !isOn(services.settings, options::preventtypo)) return;
    std::string cover = injection::MakeCoverMessage(message, services.values.email);
    if (known) {
        (void)chatCommands::parse(typed, text, conversation);
    } else {
        reportUnknown(*typedWord, conversation);
    }
    message = std::move(cover);
}

}  // namespace

void chatCommands::FilterOutgoing(std::string& message, Conversation& conversation) {
    Services& services = conversation.services;
    if (need(messageTools::HasTrailingData(message))) {
        message = SplitTrailingData(message, conversation);
    }
    if (services.values.rancolorOn && need(messageTools::IsTextMessage(message))) {
        auto colored = messageTools::ApplyRandomColor(message, services.chance);
        if (!colored) return;
        message = *std::move(colored);
    }
    // Where no constants are looked for there are no commands either.
    if (!messageConstants::ExpandConstants(message, conversation)) return;
    filterCommand(message, conversation);
}

bool chatCommands::parse(std::string_view message, std::string_view fullmessage,
                         Conversation& conversation) {
    const Command* const command = commandOf(need(word(message, 0)));
    if (command == nullptr) return false;
    command->act({*command, command->takesFullText ? fullmessage : message, conversation});
    return true;
}

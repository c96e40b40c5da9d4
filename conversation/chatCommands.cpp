#include "conversation/chatCommands.h"

#include "base/Failure.h"
#include "base/text.h"
#include "conversation/Conversation.h"
#include "conversation/ProcessValues.h"
#include "conversation/injection.h"
#include "conversation/messageConstants.h"
#include "conversation/messageTools.h"
#include "desktop/webSearch.h"
#include "desktop/winamp.h"
#include "platform/MediaPlayer.h"
#include "stores/NotesStore.h"
#include "stores/options.h"

#include <algorithm>
#include <utility>

using namespace std::string_view_literals;

namespace {

/// What the user typed, and the conversation it was typed in.
struct Typed {
    std::string_view message;
    std::string_view fullmessage;
    Conversation& conversation;
};

/// `text` without the command and the blank behind it, where they stand together.
std::string behind(std::string_view command, std::string_view text) {
    return replaceFirst(std::string(text), std::string(command) + " ", "");
}

void changeNick(const Typed& typed) {
    std::string nick = behind("!nick", typed.message);
    const std::string asTyped = nick;
    typed.conversation.services.program.ApplyNickTemplate(nick);
    typed.conversation.showPopup("Changed Nick Name To:\r\n" + asTyped);
}

void addNote(const Typed& typed) {
    NotesStore& notes = typed.conversation.services.notes;
    notes.add(behind("!note", typed.fullmessage));
    typed.conversation.showPopup("Note added.");
    notes.savenotes();
}

void showNotes(const Typed& typed) { typed.conversation.services.program.ShowNotes(); }

void toggleRandomColors(const Typed& typed) {
    bool& on = typed.conversation.services.values.rancolorOn;
    on = !on;
    typed.conversation.showPopup(on ? "Random Message Colors On." : "Random Message Colors Off.");
}

template <auto Search, char const* Command>
void search(const Typed& typed) {
    std::string text = behind(Command, typed.message);
    Search(text, typed.conversation.services.browser);
}

void forceExit(const Typed& typed) { typed.conversation.services.program.ForceExit(); }

/// Speaks in the contact's name, once there is a contact.
void speak(const Typed& typed, const std::string& words) {
    const ConnectionRecord& connection = typed.conversation.connection;
    if (connection.contactEmail.empty() || connection.contactNick.empty()) {
        typed.conversation.showPopup("No user in conversation.");
        return;
    }
    injection::InjectMessage(typed.conversation, words, "000000", "B");
}

void makeMeSay(const Typed& typed) { speak(typed, behind("!makemesay", typed.message)); }

void preview(const Typed& typed) {
    speak(typed, "Message Preview: \r\n\r\n" + behind("!preview", typed.fullmessage));
}

void nickFollowsPlayer(const Typed& typed) {
    Services& services = typed.conversation.services;
    ProcessValues& values = services.values;
    values.prewinampnickName = values.nickname;
    values.winampPrefix = behind("!winamp", typed.message);
    values.winampOn = true;
    std::string nick = values.winampPrefix + " " + winamp::CurrentSong(services.player);
    services.program.ApplyNickTemplate(nick);
    typed.conversation.showPopup("Winamp Nick Name On.");
}

void nickComesBack(const Typed& typed) {
    Services& services = typed.conversation.services;
    services.values.winampOn = false;
    services.program.ApplyNickTemplate(services.values.prewinampnickName);
    typed.conversation.showPopup("Winamp Nick Name Off.");
}

void followOrSteerPlayer(const Typed& typed) {
    Services& services = typed.conversation.services;
    if (const int number = winamp::transportCommand(typed.message); number != 0) {
        services.player.command(services.player.WinampWindow(), number);
    } else if (services.values.winampOn) {
        nickComesBack(typed);
    } else {
        nickFollowsPlayer(typed);
    }
}

constexpr char google[] = "!google";
constexpr char dictionary[] = "!dictionary";
constexpr char thesaurus[] = "!thesaurus";
constexpr char acronym[] = "!acronym";

struct Command {
    std::string_view word;
    void (*act)(const Typed& typed);
    /// It takes the whole text and not its first line alone.
    bool takesFullText = false;
};

constexpr Command commands[] = {
    {"!nick", changeNick},
    {"!note", addNote, true},
    {"!notes", showNotes},
    {"!rancolor", toggleRandomColors},
    {"!rancolour", toggleRandomColors},
    {google, search<webSearch::SearchGoogle, google>},
    {dictionary, search<webSearch::SearchDictionary, dictionary>},
    {"!forceexit", forceExit},
    {thesaurus, search<webSearch::SearchThesaurus, thesaurus>},
    {"!makemesay", makeMeSay},
    {"!preview", preview, true},
    {acronym, search<webSearch::SearchAcronym, acronym>},
    {"!winamp", followOrSteerPlayer},
};

const Command* commandOf(std::string_view first) {
    const auto* const found =
        std::find_if(std::begin(commands), std::end(commands),
                     [&](const Command& known) { return known.word == first; });
    return found == std::end(commands) ? nullptr : found;
}

/// The chunk to go on with where there is more in it than its first message.
std::string SplitTrailingData(std::string_view message, Conversation& conversation) {
    const auto length = need(checked<std::size_t>(need(messageTools::PayloadLength(message)) +
                                                  std::int64_t(firstLine(message).size())));
    const std::string first = std::string(message.substr(0, length)).append(lineEnd);
    const std::string remainder = replaceFirst(std::string(message), first, "");
    if (!need(messageTools::IsTextMessage(remainder))) return first;
    const std::string_view secondCommand = need(messageTools::FirstBodyLine(remainder));
    // The text of the second message is looked for in the process's own command line, where it is
    // not: two texts in one chunk are passed on as they came.
    const std::string_view text =
        need(messageTools::textAndRest(conversation.services.commandLine));
    return chatCommands::parse(secondCommand, text, conversation) ? first : std::string(message);
}

/// Tells the user, in the contact's name, of a command that does not exist.
void tellUnknown(std::string_view typedWord, Conversation& conversation) {
    injection::InjectMessage(conversation,
                             injection::boldName(typedWord, conversation) + " command not known.",
                             "ff", "");
}

}  // namespace

std::string chatCommands::FilterOutgoing(std::string& message, Conversation& conversation) {
    Services& services = conversation.services;
    if (need(messageTools::HasTrailingData(message))) {
        message = SplitTrailingData(message, conversation);
    }
    if (services.values.rancolorOn && need(messageTools::IsTextMessage(message))) {
        auto colored = messageTools::ApplyRandomColor(message, services.chance);
        if (!colored) return message;
        message = *std::move(colored);
    }
    auto expanded = messageConstants::ExpandConstants(message, conversation);
    // Where no constants are looked for there are no commands either.
    if (!expanded) return message;
    message = *std::move(expanded);

    const std::string_view fulltext = messageTools::textAndRest(message).value_or("");
    const std::string_view firstBodyLine = firstLine(fulltext);
    const auto first = word(firstBodyLine, 0);
    if (!first) return message;
    const std::string_view typedWord = *first;
    if (const Command* const command = commandOf(typedWord)) {
        if (command->act == forceExit) services.program.ForceExit();
        std::string cover = injection::MakeCoverMessage(message, services.values.email);
        (void)parse(firstBodyLine, command->takesFullText ? fulltext : ""sv, conversation);
        return cover;
    }
    if (!firstBodyLine.starts_with('!')) return message;
    if (!isOn(services.settings, options::preventtypo)) return message;
    std::string cover = injection::MakeCoverMessage(message, services.values.email);
    tellUnknown(typedWord, conversation);
    return cover;
}

bool chatCommands::parse(std::string_view message, std::string_view fullmessage,
                         Conversation& conversation) {
    const Command* const command = commandOf(need(word(message, 0)));
    if (command == nullptr) return false;
    command->act({message, fullmessage, conversation});
    return true;
}

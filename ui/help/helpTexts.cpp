#include "ui/help/helpTexts.h"

#include "ui/help/helpPictures.h"

namespace helpTexts {

namespace {

constexpr std::array<PagedForm::Page, 7> pages{{
    {0, "   Winamp Nick Name", helpPictures::paintNotes, 1080},
    {5, "   Winamp Contol", helpPictures::paintPlayer, 1680},
    {7, "   Nick Name Change", helpPictures::paintCard, 2280},
    {2, "   Random Message Color", helpPictures::paintColors, 2880},
    {3, "   Web Engines", helpPictures::paintGlass, 3480},
    {1, "   Message Constants", helpPictures::paintBrackets, 4080},
    {6, "   Notes", helpPictures::paintPaper, 4680},
}};

constexpr std::array<Caption, 9> winampNickName{{
    {"Label16", {180, 765, 4965, 225}, "To Enable:", true},
    {"Label17",
     {180, 1020, 4965, 420},
     "Type \"!winamp\" (without quotes) into a converation window, followed by the song title "
     "prefix."},
    {"Label1", {360, 1500, 4785, 225}, "e.g. !winamp John - Listening to:"},
    {"Label40", {360, 1755, 4785, 225}, "e.g. !winamp John (<d>) - Listening to:"},
    {"Label13", {180, 2205, 4965, 225}, "To Disable (Once Enabled):", true},
    {"Label20",
     {180, 2460, 4965, 225},
     "Type \"!winamp\" (without quotes) into a converation window."},
    {"Label19", {360, 2745, 4785, 225}, "e.g. !winamp"},
    {"Label18", {180, 3195, 540, 225}, "Note:", true},
    {"Label14", {735, 3195, 4410, 225}, "Your nick name will be returned to what it was."},
}};

constexpr std::array<Caption, 10> winampControl{{
    {"Label29", {180, 765, 4965, 225}, "Next Winamp Song", true},
    {"Label28",
     {180, 1005, 4965, 225},
     "Type \"!winamp next\" (without quotes) into a converation window."},
    {"Label30", {180, 1425, 4965, 225}, "Previous Winamp Song", true},
    {"Label31",
     {180, 1665, 4965, 225},
     "Type \"!winamp prev\" (without quotes) into a converation window."},
    {"Label32", {180, 2085, 4965, 225}, "Pause/Play Winamp", true},
    {"Label33",
     {180, 2325, 4965, 420},
     "To toggle pause/play type \"!winamp pause\" (without quotes) into a converation window."},
    {"Label34", {180, 2940, 4965, 225}, "Stop Winamp Song", true},
    {"Label36",
     {180, 3180, 4965, 225},
     "Type \"!winamp stop\" (without quotes) into a converation window."},
    {"Label38", {180, 3600, 4965, 225}, "Play Winamp Song", true},
    {"Label37",
     {180, 3840, 4965, 225},
     "Type \"!winamp play\" (without quotes) into a converation window."},
}};

constexpr std::array<Caption, 2> nickNameChange{{
    {"Label5",
     {180, 765, 4965, 420},
     "Type \"!nick\" (without quotes) into a converation window, followed by the nick name you "
     "want."},
    {"Label6", {360, 1245, 4785, 225}, "e.g. !nick John"},
}};

constexpr std::array<Caption, 6> randomColor{{
    {"Label10", {180, 765, 4965, 225}, "To Enable:", true},
    {"Label15",
     {180, 1020, 4965, 225},
     "Type \"!rancolor\" (without quotes) into a converation window."},
    {"Label12", {180, 1470, 4965, 225}, "To Disable (Once Enabled):", true},
    {"Label11",
     {180, 1725, 4965, 225},
     "Type \"!rancolor\" (without quotes) into a converation window."},
    {"Label3", {450, 2265, 4590, 225}, "You will not see the random colors."},
    {"Label4", {450, 2565, 4590, 225}, "Color can also be spelt 'colour'."},
}};

constexpr std::array<Caption, 9> webEngines{{
    {"Label8",
     {180, 765, 4965, 420},
     "These commands allow you to easily access web engines such as Google."},
    {"Label7", {180, 1290, 4965, 225}, "Google", true},
    {"Label21",
     {180, 1530, 4965, 225},
     "Type !google followed by your query into a conversation window."},
    {"Label22", {180, 1965, 4965, 225}, "Dictionary", true},
    {"Label23",
     {180, 2205, 4965, 225},
     "Type !dictionary followed by your query into a conversation window."},
    {"Label24", {180, 2640, 4965, 225}, "Thesarus", true},
    {"Label25",
     {180, 2880, 4965, 225},
     "Type !thesaurus followed by your query into a conversation window."},
    {"Label26", {180, 3315, 4965, 225}, "Acronym", true},
    {"Label27",
     {180, 3555, 4965, 225},
     "Type !acronym followed by your query into a conversation window."},
}};

constexpr std::array<Caption, 4> messageConstants{{
    {"Label35",
     {180, 735, 4965, 225},
     "These constants are easy ways of telling your contact information."},
    {"Label41",
     {450, 3255, 4770, 420},
     "To preview what constants will look like send command !preview then the constant."},
    {"Label39",
     {450, 3720, 4590, 420},
     "You can use message contants in !nick nickname changes and !winamp prefixes."},
    {"Label42", {450, 4200, 4590, 225}, "Constants are only visible to the recipient"},
}};

constexpr std::array<Caption, 7> notes{{
    {"Label46",
     {180, 765, 4590, 420},
     "Permanently and easily store personal notes. Which you can edit/delete."},
    {"Label43", {180, 1290, 4965, 225}, "Add A Note", true},
    {"Label44",
     {180, 1545, 4965, 420},
     "Type \"!note\" (without quotes) into a converation window, followed by the note you want to "
     "add."},
    {"Label45", {360, 2025, 4785, 225}, "e.g. !note Appointment on 1/2/03"},
    {"Label47", {180, 2475, 4965, 225}, "View/Edit/Delete Notes", true},
    {"Label48",
     {180, 2730, 4965, 420},
     "Type \"!notes\" (exactly and without quotes) into a converation window."},
    {"Label49", {450, 3420, 4590, 225}, "Your note can be on multiple lines."},
}};

constexpr std::array<PageText, 7> texts{{
    {0, "Winamp Nick Name", winampNickName},
    {5, "Winamp Control", winampControl},
    {7, "Nick Name Change", nickNameChange},
    {2, "Random Message Color", randomColor},
    {3, "Web Engines", webEngines},
    {1, "Message Constants", messageConstants},
    {6, "Notes", notes},
}};

}  // namespace

const PagedForm::Design window{"Cobweave - Help",        "Help", 8490, 6555,
                               {3000, 1080, 5235, 4590}, pages,  10};

const std::span<const PageText> pageTexts = texts;

const std::array<std::array<Row, 3>, 4> constantSteps{{
    {{{"Current Winamp Song", "Type <ws> into your message. Remember w = winamp, s = song."},
      {"Current Email Address", "Type <me> into your message. Remember m = my, e = email."},
      {"Current Nick Name", "Type <mn> into your message. Remember m = my, n = nickname."}}},
    {{{"Contact Email Address", "Type <ce> into your message. Remember c = contact, e = email."},
      {"Contact Nick Name", "Type <cn> into your message. Remember c = contact, n = nickname."},
      {"Time", "Type <t> into your message."}}},
    {{{"Date", "Type <d> into your message."},
      {"", ""},
      {"Computer Uptime", "Type <ut> into your message. Remember u = up, t = time."}}},
    {{{"Total Ram (Physically In Computer)",
       "Type <tr> into your message. Remember t = total, r = ram."},
      {"Used Ram", "Type <ur> into your message. Remember u = used, r = ram."},
      {"Ram Usage (In Percentage, shows '%' also)",
       "Type <ru> into your message. Remember r = ram, u = usage."}}},
}};

}  // namespace helpTexts

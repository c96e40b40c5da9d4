#include "tests/ui/windows.h"
#include "ui/help/frmhelp.h"

#include <gtest/gtest.h>

#include <QLabel>

#include <string>
#include <tuple>

namespace {

/// What each page says, to the letter, spelling mistakes included: they are meant.
constexpr std::tuple<int, const char*, const char*> pageTexts[] = {
    {0, "Label16", "To Enable:"},
    {0, "Label17",
     "Type \"!winamp\" (without quotes) into a converation window, followed by the song title "
     "prefix."},
    {0, "Label1", "e.g. !winamp John - Listening to:"},
    {0, "Label40", "e.g. !winamp John (<d>) - Listening to:"},
    {0, "Label13", "To Disable (Once Enabled):"},
    {0, "Label20", "Type \"!winamp\" (without quotes) into a converation window."},
    {0, "Label19", "e.g. !winamp"},
    {0, "Label18", "Note:"},
    {0, "Label14", "Your nick name will be returned to what it was."},
    {5, "Label29", "Next Winamp Song"},
    {5, "Label28", "Type \"!winamp next\" (without quotes) into a converation window."},
    {5, "Label30", "Previous Winamp Song"},
    {5, "Label31", "Type \"!winamp prev\" (without quotes) into a converation window."},
    {5, "Label32", "Pause/Play Winamp"},
    {5, "Label33",
     "To toggle pause/play type \"!winamp pause\" (without quotes) into a converation window."},
    {5, "Label34", "Stop Winamp Song"},
    {5, "Label36", "Type \"!winamp stop\" (without quotes) into a converation window."},
    {5, "Label38", "Play Winamp Song"},
    {5, "Label37", "Type \"!winamp play\" (without quotes) into a converation window."},
    {7, "Label5",
     "Type \"!nick\" (without quotes) into a converation window, followed by the nick name you "
     "want."},
    {7, "Label6", "e.g. !nick John"},
    {2, "Label10", "To Enable:"},
    {2, "Label15", "Type \"!rancolor\" (without quotes) into a converation window."},
    {2, "Label12", "To Disable (Once Enabled):"},
    {2, "Label11", "Type \"!rancolor\" (without quotes) into a converation window."},
    {2, "Label3", "You will not see the random colors."},
    {2, "Label4", "Color can also be spelt 'colour'."},
    {3, "Label8", "These commands allow you to easily access web engines such as Google."},
    {3, "Label7", "Google"},
    {3, "Label21", "Type !google followed by your query into a conversation window."},
    {3, "Label22", "Dictionary"},
    {3, "Label23", "Type !dictionary followed by your query into a conversation window."},
    {3, "Label24", "Thesarus"},
    {3, "Label25", "Type !thesaurus followed by your query into a conversation window."},
    {3, "Label26", "Acronym"},
    {3, "Label27", "Type !acronym followed by your query into a conversation window."},
    {6, "Label46", "Permanently and easily store personal notes. Which you can edit/delete."},
    {6, "Label43", "Add A Note"},
    {6, "Label44",
     "Type \"!note\" (without quotes) into a converation window, followed by the note you want to "
     "add."},
    {6, "Label45", "e.g. !note Appointment on 1/2/03"},
    {6, "Label47", "View/Edit/Delete Notes"},
    {6, "Label48", "Type \"!notes\" (exactly and without quotes) into a converation window."},
    {6, "Label49", "Your note can be on multiple lines."},
    {1, "Label35", "These constants are easy ways of telling your contact information."},
    {1, "Label41",
     "To preview what constants will look like send command !preview then the constant."},
    {1, "Label39", "You can use message contants in !nick nickname changes and !winamp prefixes."},
    {1, "Label42", "Constants are only visible to the recipient"},
};

TEST(HelpTexts, AreToTheLetter) {
    frmhelp window;
    for (const auto& [page, name, text] : pageTexts) {
        EXPECT_EQ(named<QLabel>(pageOf(window, page), name).text(), text) << page << ' ' << name;
    }
}

TEST(HelpTexts, AreAllThatThePagesSay) {
    frmhelp window;
    std::size_t labels = 0;
    for (const QLabel* const label : window.findChildren<QLabel*>()) {
        const bool isOfAButton = dynamic_cast<const FlashButton*>(label->parent()) != nullptr;
        labels += isOfAButton ? 0 : 1;
    }
    // And six rows that change, and the remark below all pages.
    EXPECT_EQ(labels, std::size(pageTexts) + 6 + 1);
}

TEST(HelpTexts, StandFromTopToBottom) {
    frmhelp window;
    int page = -1;
    int bottom = 0;
    for (const auto& [index, name, text] : pageTexts) {
        const QWidget& label = named<QLabel>(pageOf(window, index), name);
        const bool besideTheOther = std::string(name) == "Label14";
        if (index == page && !besideTheOther) {
            EXPECT_GE(label.y(), bottom) << text;
        }
        page = index;
        bottom = label.y() + label.height();
    }
}

}  // namespace

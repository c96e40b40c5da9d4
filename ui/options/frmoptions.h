#pragma once

#include "base/Event.h"
#include "ui/common/PagedForm.h"
#include "ui/options/optionControls.h"
#include "ui/options/optionRows.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

#include <array>
#include <string>

class Client;
class Clock;
class ForeignWindows;
class MessageBox;
class Registry;
class SettingsStore;
class frmTitle;

/// The window in which the user edits the settings. It reads them when it is made; OK writes them.
/// Changes to the title of Messenger's window take effect at once.
class frmoptions final : public PagedForm {
public:
    /// What the window works on.
    struct Parts {
        SettingsStore& settings;
        frmTitle& title;
        Registry& registry;
        MessageBox& messageBox;
        ForeignWindows& windows;
        Client& client;
        Clock& clock;
        /// What to enter in Messenger so that it connects through the proxy.
        std::string howToConnect;
        /// Called where the user wants to see the help.
        Event<> showHelp;
    };

    /// The window with what the settings hold now, not shown yet.
    explicit frmoptions(const Parts& parts);

    /// A first run: the window cannot be closed until OK was pressed, and OK starts the client
    /// again, so that it connects through the proxy.
    bool RestartMessenger = false;

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* control, QEvent* event) override;

private:
    void addTexts();
    void connectControls();
    void playMovies();
    void copyTitle();
    void showOptions();
    void completePair();
    void showSample();
    void center();
    void resetTitle();
    void refuse(const Event<>& answered);
    void restartMessenger();

    void Check1_Click();
    void Check3_Click();
    void Text1_Change();
    void Command1_Click();
    void Command2_Click();

    Parts parts;
    /// OK is being carried out; a message box may be open.
    bool isSaving = false;
    /// The user may move the window from then on.
    bool isCentered = false;

    // General options.
    Placed<ShockwaveFlash> generaloptions{page(0), "generaloptions", {0, 0, 5235, 810}};
    Placed<ShockwaveFlash> ShockwaveFlash1{page(0), "ShockwaveFlash1", {4905, 4095, 225, 225}};
    Headed<Toggle> Label1{page(0),
                          "Label1",
                          {270, 1185, 1500, 300},
                          {"Label22",
                           {180, 960, 4965, 225},
                           "Disable \"User Is Typing\" message",
                           "When this is enabled, your contacts do not see that you are typing."}};
    Headed<Toggle> Label21{page(0),
                           "Label21",
                           {270, 1875, 1500, 300},
                           {"Label23",
                            {180, 1650, 4965, 225},
                            "Allow Message Constants",
                            "Fills in texts such as <t> and <mn> as you send them. Chat commands "
                            "such as !nick need it too."}};
    Placed<ChoiceButton> fn{page(0), "fn", {345, 2565, 2490, 300}, "Freindly Name (Nick Name)"};
    Placed<ChoiceButton> address{page(0), "address", {2940, 2565, 1800, 300}, "Email Address"};
    Headed<Toggle> Label6{
        page(0),
        "Label6",
        {270, 3255, 1500, 300},
        {"Label5",
         {180, 3030, 4965, 225},
         "Prevent Command Typo (i.e \"!notee\" instead of \"!note\")",
         "When this is enabled, a text that begins with \"!\" and is no command is not sent."}};
    Headed<Toggle> Label12{
        page(0),
        "Label12",
        {270, 3945, 1500, 300},
        {"Label13",
         {180, 3720, 4965, 225},
         "Show Last Thing Contact Said",
         "Repeats the last thing that a contact said to you when that contact next joins."}};

    // Signing in.
    Placed<ShockwaveFlash> signingin{page(1), "signingin", {0, 0, 5235, 810}};
    Headed<StatusBox> Combo1{page(1),
                             "Combo1",
                             {345, 1230, 2100, 330},
                             {"Label9",
                              {180, 960, 2700, 225},
                              "Inital Sign In Status",
                              "Messenger signs in with this status, whichever you choose there."}};
    Placed<QCheckBox> Check1{page(1), "Check1", {345, 2010, 2100, 300}, "Enabled"};
    Placed<QCheckBox> mw{page(1), "mw", {345, 2760, 2400, 300}, "Messenger Window"};
    Placed<QCheckBox> ti{page(1), "ti", {345, 3105, 2400, 300}, "Tray Icon Tool Tip"};
    Placed<Picture> mwi{page(1), "mwi", {3000, 2040, 1980, 750}};
    Placed<Picture> tii{page(1), "tii", {3000, 2040, 1980, 750}};

    // Timestamps.
    Placed<ShockwaveFlash> tsmessages{page(2), "tsmessages", {0, 0, 5235, 810}};
    Placed<QCheckBox> Check2{page(2), "Check2", {180, 990, 2100, 300}, "Enabled"};
    Headed<BracketBox> prefix{
        page(2),
        "prefix",
        {1080, 1545, 420, 330},
        {"Label8",
         {180, 1605, 900, 225},
         "Prefix",
         "The character before the time. It has to be a Western European one."}};
    Headed<BracketBox> postfix{
        page(2),
        "postfix",
        {1080, 2010, 420, 330},
        {"Label16",
         {180, 2070, 900, 225},
         "Postfix",
         "The character behind the time. It has to be a Western European one."}};
    Headed<Choice> Picture3{
        page(2),
        "Picture3",
        {1080, 2490, 3000, 330},
        {"Label18",
         {180, 2550, 900, 225},
         "Color:",
         "The color of the time, for those who have the Messenger Plus add-on."}};
    Placed<ChoiceButton> red{&Picture3, "red", {0, 0, 1200, 330}, "Red"};
    Placed<ChoiceButton> black{&Picture3, "black", {1200, 0, 1200, 330}, "Black"};
    Placed<TextLabel> sample{page(2), "sample", {1080, 3030, 3900, 225}};

    // Alerts.
    Placed<ShockwaveFlash> alerts{page(4), "alerts", {0, 0, 5235, 810}};
    Headed<Toggle> Label2{page(4),
                          "Label2",
                          {270, 1605, 1500, 300},
                          {"Label24",
                           {180, 1380, 4965, 225},
                           "Alert when a user goes offline",
                           "Shows a message when a contact signs out."}};
    Headed<Toggle> Label4{page(4),
                          "Label4",
                          {270, 2295, 1500, 300},
                          {"Label25",
                           {180, 2070, 4965, 225},
                           "Alert when a user closes a conversation window",
                           "Shows a message when a contact closes the conversation."}};
    Headed<Toggle> Label3{page(4),
                          "Label3",
                          {270, 2985, 1500, 300},
                          {"Label26",
                           {180, 2760, 4965, 225},
                           "Alert when a user open a conversation window",
                           "Shows a message when a contact opens a conversation with you."}};
    Headed<Toggle> Label15{page(4),
                           "Label15",
                           {270, 3675, 1500, 300},
                           {"Label27",
                            {180, 3450, 4965, 225},
                            "Alert when a user joins a conversation window",
                            "Shows a message when a contact joins a conversation that you opened; "
                            "needs the alert above."}};

    // Window rename.
    Placed<ShockwaveFlash> windowrename{page(5), "windowrename", {0, 0, 5235, 810}};
    Placed<QCheckBox> Check3{page(5), "Check3", {180, 990, 2100, 300}, "Enabled"};
    Placed<TitleBox> Text1{page(5), "Text1", {180, 1410, 4800, 330}, options::captionToEnter};
    Placed<Picture> Image15{page(5), "Image15", {180, 2010, 4800, 1440}};
    Placed<LineLabel> Label11{page(5), "Label11", {600, 2070, 3900, 255}};

    // In the order of the Tab key.
    Placed<QPushButton> Command1{this, "Command1", {6000, 5520, 1095, 375}, "&Cancel"};
    Placed<QPushButton> Command2{this, "Command2", {7200, 5520, 975, 375}, "&OK"};

    /// What the window edits but for the title of Messenger's window, which is `frmTitle`'s.
    /// Written in this order.
    std::array<OptionRow, 17> rows{
        optionRow(options::initialStatus, Combo1),
        optionRow(options::useristyping, Label1),
        optionRow(options::alertoffline, Label2),
        optionRow(options::alertopenwindow, Label3),
        optionRow(options::alertclosewindow, Label4),
        optionRow(options::alertjoinwindow, Label15),
        optionRow(options::constants, Label21),
        optionRow(options::timestamp, Check2),
        optionRow(options::callby, {options::byAddress, address}, {options::byNickName, fn}),
        optionRow(options::preventtypo, Label6),
        optionRow(options::progress, Check1),
        optionRow(options::messengerwindow, mw),
        optionRow(options::trayicon, ti),
        optionRow(options::lastthing, Label12),
        optionRow(options::tsprefix, prefix),
        optionRow(options::tspostfix, postfix),
        optionRow(options::tscolor, {options::red, red}, {options::black, black})};
};

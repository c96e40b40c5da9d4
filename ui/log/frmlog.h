#pragma once

#include "ui/common/Form.h"
#include "ui/common/headings.h"
#include "ui/common/pictures.h"
#include "ui/log/LogLines.h"

#include <QListView>
#include <QPushButton>
#include <QTimer>

#include <string_view>

class Clock;
class MessageBox;

/// The window that lists what contacts did during this run. The list is the only place where its
/// lines are kept.
class frmlog final : public Form {
public:
    frmlog(Clock& clock, MessageBox& messageBox);

    Placed<Banner> Image4{this, "Image4", {0, 0, 6360, 900}, "Log"};
    Placed<QListView> List1{this, "List1", {120, 960, 6135, 1590}};
    Placed<Picture> Frame1{this, "Frame1", {180, 2850, 255, 255}};
    Placed<QPushButton> Command3{
        this, "Command3", {480, 2760, 2535, 375}, "Copy Selected Item To Clipboard"};
    Placed<Picture> Frame2{this, "Frame2", {3360, 2850, 255, 255}};
    Placed<QPushButton> Command2{this, "Command2", {3675, 2775, 990, 375}, "C&lear"};
    Placed<Picture> Frame3{this, "Frame3", {4860, 2850, 255, 255}};
    Placed<QPushButton> Command1{this, "Command1", {5160, 2760, 1080, 375}, "&Close"};

    /// Adds an entry of one line with the time behind it, to be seen soon if the window is shown.
    void AddItem(std::string_view text);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();

    Clock& clock;
    MessageBox& messageBox;
    LogLines lines;
    LogLineDelegate delegate;
    QTimer publishing;
};

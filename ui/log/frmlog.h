#pragma once

#include "ui/common/Form.h"
#include "ui/common/labels.h"
#include "ui/common/lists.h"
#include "ui/common/pictures.h"

#include <QAbstractListModel>
#include <QListView>
#include <QPushButton>
#include <QTimer>

#include <array>
#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

class Clock;
class MessageBox;

/// The lines of the log, the newest of them. A list lays out all of its lines anew at each change,
/// so new lines reach it many at a time, when they are published.
class LogLines : public QAbstractListModel {
public:
    /// How many lines a list shows.
    static constexpr std::size_t most = 32767;

    /// Adds a line, of UTF-8, at the end, which no list shows before `publish`. Beyond some more
    /// than `most` lines the oldest go.
    void append(std::string line);
    /// Removes all lines, published or not.
    void clear();
    /// Shows what was appended since the last time.
    void publish();

    /// The published line at `index`, as it was appended; empty where there is none.
    [[nodiscard]] std::string at(int index) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    /// Finds nothing: a letter typed on the list would search all lines, and block the program
    /// meanwhile.
    [[nodiscard]] QModelIndexList match(const QModelIndex& /*start*/, int /*role*/,
                                        const QVariant& /*value*/, int /*hits*/,
                                        Qt::MatchFlags /*flags*/) const override {
        return {};
    }

private:
    void dropOldest();

    std::deque<std::string> lines;
    std::size_t published = 0;
};

/// Gives all lines of the log the size of the widest: asking each line for its own would make a
/// long log slow.
class LogLineDelegate : public RowDelegate {
public:
    /// For lines in the font that the application has now.
    LogLineDelegate();

    /// Makes all lines wide enough for this one.
    void makeRoomFor(std::string_view utf8);
    /// Forgets all widths, for a list that is empty.
    void reset() { widest = 0; }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;

private:
    /// The width of each character of ASCII. To lay out a whole line takes a millisecond when it is
    /// long, which a flood of such lines would make all of the program's time.
    std::array<double, 128> widths;
    /// No letter of another script is wider, and no emoji.
    double otherWidth = 0;
    double widest = 0;
};

/// The window that lists what contacts did during this run. The list is the only place where its
/// lines are kept.
class frmlog final : public Form {
public:
    /// An empty, hidden window. Both have to outlive it.
    frmlog(Clock& clock, MessageBox& messageBox);

    // The title, the list, and the buttons with their pictures.
    Placed<Banner> Image4{this, "Image4", {0, 0, 6360, 900}, "Log"};
    Placed<Hinted<QListView>> List1{this, "List1", {120, 960, 6135, 1590}};
    Placed<Picture> Frame1{this, "Frame1", {180, 2850, 255, 255}};
    Placed<QPushButton> Command3{
        this, "Command3", {480, 2760, 2535, 375}, "Copy Selected Item To Clipboard"};
    Placed<Picture> Frame2{this, "Frame2", {3360, 2850, 255, 255}};
    Placed<QPushButton> Command2{this, "Command2", {3675, 2775, 990, 375}, "C&lear"};
    Placed<Picture> Frame3{this, "Frame3", {4860, 2850, 255, 255}};
    Placed<QPushButton> Command1{this, "Command1", {5160, 2760, 1080, 375}, "&Close"};

    /// Adds an entry of one line with the time behind it, to be seen soon if the window is shown. A
    /// text that is longer than the list shows is cut off.
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

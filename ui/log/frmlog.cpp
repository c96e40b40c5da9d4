#include "ui/log/frmlog.h"

#include "base/codePage.h"
#include "base/userText.h"
#include "platform/Clock.h"
#include "platform/MessageBox.h"
#include "ui/common/look.h"
#include "ui/common/shownText.h"

#include <QApplication>
#include <QFontMetrics>
#include <QPainter>
#include <QResizeEvent>
#include <QShortcut>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <utility>

namespace {

/// A flood of lines is shown ten times a second.
constexpr std::chrono::milliseconds publishDelay{100};

/// What the window's frame adds to the client area. The places of the controls follow from the size
/// with the frame, and real frames differ from desktop to desktop.
constexpr int frameWidth = 120;
constexpr int frameHeight = 510;
constexpr int smallestWidth = 6555;
constexpr int smallestHeight = 3810;

/// Two sheets, for copying.
void paintSheets(QPainter& painter) {
    drawLinesIn(painter, look::accent, 1.2);
    painter.drawRoundedRect(QRectF(2, 2, 8, 10), 1, 1);
    painter.drawRoundedRect(QRectF(6, 5, 8, 10), 1, 1);
    for (const double y : {8.5, 10.5, 12.5})
        painter.drawLine(QPointF(8, y), QPointF(12, y));
}

/// A broom's stroke, for clearing.
void paintSweep(QPainter& painter) {
    drawLinesIn(painter, look::accent, 1.6);
    painter.drawLine(QPointF(13.5, 2), QPointF(9, 7.5));
    drawLinesIn(painter, look::accent, 1.2);
    painter.drawPolygon(QPolygonF{{6.5, 6.5}, {10.5, 9.5}, {8.5, 14.5}, {2, 13}, {4, 10.5}});
    painter.drawLine(QPointF(5, 13.5), QPointF(7, 10.5));
}

/// A cross, for closing.
void paintCross(QPainter& painter) {
    drawLinesIn(painter, look::accent, 2);
    painter.drawLine(QPointF(4, 4), QPointF(12, 12));
    painter.drawLine(QPointF(12, 4), QPointF(4, 12));
}

int scaled(int twips) { return look::scaled(pixels(twips)); }

void moveTo(QWidget& control, int left, int top) { control.move(scaled(left), scaled(top)); }

}  // namespace

void LogLines::append(std::string line) {
    // While the window is closed nobody publishes; to drop each line by itself would cost a list as
    // much as many at a time.
    constexpr std::size_t atOnce = 1024;
    lines.push_back(std::move(line));
    if (lines.size() >= most + atOnce) dropOldest();
}

void LogLines::dropOldest() {
    if (lines.size() <= most) return;
    const auto count = static_cast<std::ptrdiff_t>(lines.size() - most);
    const std::size_t shown = std::min(published, lines.size() - most);
    if (shown > 0) beginRemoveRows({}, 0, static_cast<int>(shown) - 1);
    lines.erase(lines.begin(), lines.begin() + count);
    published -= shown;
    if (shown > 0) endRemoveRows();
}

void LogLines::clear() {
    beginResetModel();
    lines.clear();
    published = 0;
    endResetModel();
}

void LogLines::publish() {
    dropOldest();
    if (published == lines.size()) return;
    beginInsertRows({}, static_cast<int>(published), static_cast<int>(lines.size()) - 1);
    published = lines.size();
    endInsertRows();
}

std::string LogLines::at(int index) const {
    const auto place = static_cast<std::size_t>(index);
    return index >= 0 && place < published ? lines[place] : std::string();
}

int LogLines::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(published);
}

QVariant LogLines::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole) return {};
    return shownText(at(index.row())).replace('\n', ' ');
}

LogLineDelegate::LogLineDelegate() {
    const QFontMetricsF metrics(QApplication::font());
    for (std::size_t code = 0; code < widths.size(); ++code)
        widths[code] =
            metrics.horizontalAdvance(shownLine(std::string(1, static_cast<char>(code))));
    otherWidth = 1.5 * metrics.height();
}

void LogLineDelegate::makeRoomFor(std::string_view utf8) {
    double width = 0;
    for (const char byte : utf8) {
        const auto code = static_cast<std::uint8_t>(byte);
        if (code < 0x80) {
            width += widths[code];
        } else if (!codePage::isContinuation(byte)) {
            width += otherWidth;
        }
    }
    widest = std::max(widest, width);
}

QSize LogLineDelegate::sizeHint(const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
    const int width = static_cast<int>(std::ceil(widest)) + 2 * look::gap;
    return {width, RowDelegate::sizeHint(option, index).height()};
}

frmlog::frmlog(Clock& clock, MessageBox& messageBox)
    : Form("Cobweave - Log", 6360, 3210), clock(clock), messageBox(messageBox) {
    Frame1.setDrawing(paintSheets);
    Frame2.setDrawing(paintSweep);
    Frame3.setDrawing(paintCross);
    List1.setAccessibleName("Log");
    List1.setHint(
        "Nothing has happened yet. Contacts who come, go and open conversations are listed here, "
        "if the alerts in the options are on.");
    List1.setUniformItemSizes(true);
    List1.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    List1.setItemDelegate(&delegate);
    List1.setModel(&lines);
    setMinimumSize(scaled(smallestWidth - frameWidth), scaled(smallestHeight - frameHeight));

    publishing.setSingleShot(true);
    connect(&publishing, &QTimer::timeout, this, [this] { lines.publish(); });
    // The list's own shortcut would copy the line as it is shown.
    auto* const copying = new QShortcut(QKeySequence::Copy, &List1);
    copying->setContext(Qt::WidgetShortcut);
    connect(copying, &QShortcut::activated, this, [this] { Command3_Click(); });
    connect(&Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connect(&Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
    connect(&Command3, &QPushButton::clicked, this, [this] { Command3_Click(); });
}

void frmlog::AddItem(std::string_view text) {
    const std::string time = " (" + userText::shown(clock.timeText()) + ")";
    const std::size_t room = longestShownLine - time.size();
    const bool fits = text.size() <= room;
    // As UTF-8, since text and time may come in different codes.
    std::string line = userText::shown(fits ? text : userText::beginning(text, room - 1));
    if (!fits) line += "\u2026";
    line += time;
    delegate.makeRoomFor(line);
    lines.append(std::move(line));
    if (isVisible() && !publishing.isActive()) publishing.start(publishDelay);
}

void frmlog::Command1_Click() { hide(); }

void frmlog::Command2_Click() {
    messageBox.question(winId(), "Are you sure you want to clear the log?", [this](bool yes) {
        if (!yes) return;
        lines.clear();
        delegate.reset();
    });
}

void frmlog::Command3_Click() {
    // The current line, which has the focus frame, may not be selected.
    const QModelIndexList rows = List1.selectionModel()->selectedRows();
    copyToClipboard(lines.at(rows.isEmpty() ? -1 : rows.first().row()));
}

void frmlog::resizeEvent(QResizeEvent* event) {
    const QSizeF size = QSizeF(event->size()) / look::letterScale();
    const int outerWidth = qRound(size.width() * twipsPerPixel) + frameWidth;
    const int outerHeight = qRound(size.height() * twipsPerPixel) + frameHeight;
    Image4.resize(event->size().width(), Image4.height());
    List1.resize(scaled(outerWidth - 350), scaled(outerHeight - 2100));
    moveTo(Frame1, 180, outerHeight - 970);
    moveTo(Command3, 480, outerHeight - 1060);
    moveTo(Frame2, outerWidth - 3300, outerHeight - 980);
    moveTo(Command2, outerWidth - 2900, outerHeight - 1060);
    moveTo(Frame3, outerWidth - 1700, outerHeight - 1010);
    moveTo(Command1, outerWidth - 1400, outerHeight - 1060);
}

void frmlog::showEvent(QShowEvent* event) {
    lines.publish();
    Form::showEvent(event);
}

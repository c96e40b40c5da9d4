#include "ui/toasts/frmpopup.h"

#include "desktop/mdlFunctions.h"
#include "platform/EventLoop.h"
#include "ui/common/look.h"
#include "ui/common/roles.h"
#include "ui/common/shownText.h"
#include "ui/toasts/toastPlaces.h"

#include <QApplication>
#include <QIcon>
#include <QMouseEvent>
#include <QPainter>

#include <array>
#include <chrono>
#include <utility>

namespace {

constexpr std::chrono::milliseconds lifeTime{7000};
constexpr std::chrono::milliseconds fadeDelay{200};

void paintCross(QPainter& painter, const QRectF& box, const QColor& color) {
    const double scale = look::letterScale();
    QRectF cross(0, 0, 7 * scale, 7 * scale);
    cross.moveCenter(box.center());
    painter.setPen(QPen(color, 1.5 * scale, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(cross.topLeft(), cross.bottomRight());
    painter.drawLine(cross.topRight(), cross.bottomLeft());
}

}  // namespace

void CloseBox::setHovered(bool value) {
    isHovered = value;
    update();
}

void CloseBox::paintEvent(QPaintEvent* /*event*/) {
    if (!isHovered) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(look::accent);
    painter.drawRoundedRect(QRectF(rect()), 3, 3);
    paintCross(painter, QRectF(rect()), look::page);
}

frmpopup::frmpopup(EventLoop& loop, OwnWindows& windows)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                           Qt::WindowDoesNotAcceptFocus | Qt::BypassWindowManagerHint),
      Timer1(loop.makeTimer()),
      Timer2(loop.makeTimer()),
      windows(windows) {
    look::beforeWindows();
    setAttribute(Qt::WA_ShowWithoutActivating);
    setWindowTitle(QApplication::applicationName());
    setFixedSize(look::scaled(pixels(toastPlaces::width)),
                 look::scaled(pixels(toastPlaces::height)));
    setMouseTracking(true);

    roles::set(*this, QAccessible::AlertMessage);
    setAccessibleName(windowTitle());

    // The text stays clear of the link above and of the edge at the right.
    Label1.setMargins({0, look::scaled(6), look::scaled(4), 0});
    Label1.setMouseTracking(true);
    Label1.installEventFilter(this);
    // The label overlaps the text below it; its letters, at the top, do not.
    Label2.setAlignment(Qt::AlignTop);
    Label2.setCursor(Qt::PointingHandCursor);
    Label2.setMouseTracking(true);
    Label2.installEventFilter(this);
    QFont underlined = Label2.font();
    underlined.setUnderline(true);
    // The link is as clear of the edge at the right as the text below.
    look::narrowTo(underlined, Label2.text(), width() - Label2.x() - look::scaled(6));
    Label2.setFont(underlined);
    QPalette colors = Label2.palette();
    colors.setColor(QPalette::WindowText, look::link);
    Label2.setPalette(colors);
    Image1.setMouseTracking(true);
    Image1.setCursor(Qt::PointingHandCursor);
    Image1.setAccessibleName("Close");
    roles::set(Image1, QAccessible::Button);
    roles::set(Label2, QAccessible::Link);
    Label2.setAccessibleName(Label2.text());
    Image1.installEventFilter(this);
    Label1.setCursor(Image1.cursor());

    Timer1->tick = [this] { Unload(); };
    Timer2->tick = [this] { Timer2_Timer(); };
    Timer1->enable(lifeTime);
    Timer2->enable(fadeDelay);
}

frmpopup::~frmpopup() = default;

void frmpopup::FadeIn() const { Timer2->enable(fadeDelay); }

void frmpopup::Timer2_Timer() {
    constexpr std::array<std::int16_t, 10> steps{10, 20, 30, 40, 50, 60, 70, 80, 90, 100};
    for (const std::int16_t percentage : steps)
        setOpacity(percentage);
    Timer2->disable();
}

void frmpopup::FadeOut() {
    // There is no step of 60.
    constexpr std::array<std::int16_t, 8> steps{90, 80, 70, 50, 40, 30, 20, 10};
    for (const std::int16_t percentage : steps)
        setOpacity(percentage);
}

void frmpopup::setOpacity(std::int16_t percentage) {
    mdlFunctions::SetWindowOpacity(winId(), percentage, windows);
}

void frmpopup::Unload() {
    // A second click may come before the window is destroyed; by then the place may be another
    // toast's.
    if (std::exchange(isUnloaded, true)) return;
    Timer1->disable();
    Timer2->disable();
    FadeOut();
    hide();
    unloaded();
}

void frmpopup::Label2_Click() {
    copyToClipboard(Label1.text());
    Label1.setText("Text copied to clipboard.");
}

bool frmpopup::eventFilter(QObject* control, QEvent* event) {
    if (event->type() == QEvent::MouseMove) {
        if (control != &Label2) Image1.setHovered(control == &Image1);
        // The form would handle it as a move over itself.
        return true;
    }
    if (event->type() == QEvent::MouseButtonRelease) {
        const auto& release = *static_cast<QMouseEvent*>(event);
        const QWidget& pressed = *static_cast<QWidget*>(control);
        // Dragging the mouse off the control before letting go is no click.
        const bool isClick = release.button() == Qt::LeftButton &&
                             pressed.rect().contains(release.position().toPoint());
        if (isClick && control == &Image1) Unload();
        if (isClick && control == &Label2) Label2_Click();
    }
    return false;
}

void frmpopup::mouseMoveEvent(QMouseEvent* /*event*/) { Image1.setHovered(false); }

void frmpopup::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    look::paintBand(painter, rect());
    painter.setPen(look::line);
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));

    const int iconSize = look::scaled(16);
    const QRect icon(look::scaled(8), look::scaled(6), iconSize, iconSize);
    QApplication::windowIcon().paint(&painter, icon);
    QFont title = font();
    title.setBold(true);
    painter.setFont(title);
    painter.setPen(look::text);
    const QRect titlePlace(look::scaled(30), look::scaled(4), look::scaled(120), look::scaled(20));
    painter.drawText(titlePlace, Qt::AlignVCenter, QApplication::applicationName());
    paintCross(painter, QRectF(Image1.geometry()), look::mark);
}

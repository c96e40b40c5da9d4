#include "ui/common/PagedForm.h"

#include "ui/common/look.h"
#include "ui/common/roles.h"

#include <QPainter>

#include <string>
#include <utility>

namespace {

constexpr int bannerHeight = 840;

/// The name of a control of an array.
std::string nameOf(const char* array, int index) {
    return std::string(array) + '(' + std::to_string(index) + ')';
}

}  // namespace

PagedForm::PagedForm(const Design& design)
    : Form(design.caption, design.width, design.height),
      banner(this, "Banner", {0, 0, design.width, bannerHeight}, design.subject),
      lastPage(design.lastPage) {
    fixSize();
    // All buttons come before all pages: that is also the order of the Tab key.
    for (const auto& [index, caption, icon, top] : design.pages) {
        const std::string name = nameOf("UserControl11", index);
        const Twips place{120, top, 2565, 525};
        auto& button = UserControl11.try_emplace(index, this, name.c_str(), place).first->second;
        button.ReadProperties({.Icon = icon, .Caption = caption});
        button.Click = [this, index = index] { showPage(index); };
    }
    for (const Page& page : design.pages) {
        const std::string name = nameOf("Frame2", page.index);
        auto& frame =
            Frame2.try_emplace(page.index, this, name.c_str(), design.frame).first->second;
        QPalette colors = frame.palette();
        colors.setColor(QPalette::Window, look::page);
        frame.setPalette(colors);
        frame.setAutoFillBackground(true);
        frame.setMouseTracking(true);
        roles::set(frame, QAccessible::Grouping);
        frame.setAccessibleName(QString(page.caption).trimmed());
        const int margin = look::scaled(4);
        Shape1 = frame.geometry().adjusted(-margin, -margin, margin, margin);
    }
    showPage(0);
}

void PagedForm::setBannerTip(const QString& text) { setTip(banner, text); }

void PagedForm::showPage(int index) {
    for (int other = 0; other <= lastPage; ++other) {
        if (const auto found = Frame2.find(other); found != Frame2.end()) found->second.hide();
    }
    const auto found = Frame2.find(index);
    if (found == Frame2.end()) return;
    found->second.show();
    shownPage = index;
    update();
}

void PagedForm::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient ground(QPointF(0, banner.height()), QPointF(0, height()));
    ground.setColorAt(0, look::page);
    ground.setColorAt(1, look::bandEnd);
    painter.fillRect(rect(), ground);

    painter.setPen(look::line);
    painter.setBrush(look::page);
    painter.drawRoundedRect(QRectF(Shape1).adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);

    // A mark at the button shows which page it is.
    const auto found = UserControl11.find(shownPage);
    if (found == UserControl11.end()) return;
    const QRectF button(found->second.geometry());
    painter.setPen(Qt::NoPen);
    painter.setBrush(look::accent);
    const int inset = look::scaled(6);
    painter.drawRoundedRect(QRectF(2, button.top() + inset, 3, button.height() - 2 * inset), 1.5,
                            1.5);
}

#include "ui/help/frmhelp.h"

#include "ui/help/helpPictures.h"
#include "ui/help/helpTexts.h"

#include <QMouseEvent>

#include <string>
#include <utility>

frmhelp::frmhelp() : PagedForm(helpTexts::window) {
    for (const helpTexts::PageText& text : helpTexts::pageTexts)
        addCaptions(page(text.index), text.captions);
    addTitles();
    addBullets();
    for (TextLabel* const title :
         {static_cast<TextLabel*>(&Title1), static_cast<TextLabel*>(&Title2),
          static_cast<TextLabel*>(&Title3)}) {
        title->setHeading(true);
    }
    showConstants(0);
    FlashButton1.ReadProperties(
        {.Icon = helpPictures::paintBullet, .Caption = " Next", .whiteBG = true});
    FlashButton1.Click = [this] { FlashButton1_Click(); };
    Command1.setAutoDefault(true);
    connect(&Command1, &QPushButton::clicked, this, [this] { close(); });
}

void frmhelp::addTitles() {
    for (const PagedForm::Page& button : helpTexts::window.pages) {
        for (const helpTexts::PageText& text : helpTexts::pageTexts) {
            if (text.index != button.index) continue;
            const std::string name = "PageTitle(" + std::to_string(text.index) + ')';
            auto* const title =
                new Placed<PageTitle>(page(text.index), name.c_str(), {0, 0, 5235, 600});
            title->setSubject(text.title, button.icon);
            // It is read out before what it stands above.
            title->lower();
        }
    }
}

void frmhelp::addBullets() {
    Image3.setDrawing(helpPictures::paintBullet);
    Image5.setDrawing(helpPictures::paintBullet);
    Image5.installEventFilter(this);
    constexpr std::pair<int, Twips> others[] = {
        {2, {180, 2550, 225, 225}}, {1, {180, 3240, 225, 225}}, {1, {180, 3705, 225, 225}},
        {1, {180, 4185, 225, 225}}, {6, {180, 3405, 225, 225}},
    };
    for (const auto& [index, place] : others)
        (new Placed<Picture>(page(index), "Bullet", place))->setDrawing(helpPictures::paintBullet);
}

void frmhelp::showConstants(std::int16_t step) {
    const auto& rows = helpTexts::constantSteps.at(static_cast<std::size_t>(step));
    const std::pair<TextLabel&, TextLabel&> labels[] = {
        {Title1, Sub1}, {Title2, sub2}, {Title3, sub3}};
    for (std::size_t row = 0; row < rows.size(); ++row) {
        labels[row].first.setText(rows.at(row).title);
        labels[row].second.setText(rows.at(row).text);
    }
}

void frmhelp::FlashButton1_Click() {
    showConstants(constantStep);
    constantStep =
        constantStep == 3 ? std::int16_t{0} : static_cast<std::int16_t>(constantStep + 1);
}

bool frmhelp::eventFilter(QObject* control, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        // This is the page that the bullet is on, so nothing is seen of it.
        showPage(2);
    }
    return PagedForm::eventFilter(control, event);
}

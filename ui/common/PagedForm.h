#pragma once

#include "ui/common/FlashButton.h"
#include "ui/common/Form.h"
#include "ui/common/labels.h"

#include <QFrame>

#include <cstdint>
#include <map>
#include <span>

/// A window of several pages, of which one shows: on the left a button for each.
class PagedForm : public Form {
public:
    /// A page, and the button that shows it.
    struct Page {
        /// The number by which code knows both the button and the page.
        int index;
        const char* caption;
        Drawing icon;
        /// The upper edge of the button, in twips.
        int top;
    };
    /// What differs between such windows: texts, measures and pages.
    struct Design {
        const char* caption;
        /// The text of the banner.
        const char* subject;
        /// The size of the client area, in twips.
        int width;
        int height;
        /// The place that all pages share.
        Twips frame;
        std::span<const Page> pages;
        /// The highest index that there may be; not every one up to it is a page.
        std::int16_t lastPage;
    };

protected:
    explicit PagedForm(const Design& design);

    /// The page of this index, which has to be one of those of the design.
    [[nodiscard]] QWidget* page(int index) { return &Frame2.at(index); }
    /// Shows a page and hides all others. Hides all where there is no page of this index.
    void showPage(int index);

    /// Shows a text to those who rest the mouse on the band at the top.
    void setBannerTip(const QString& text);

    void paintEvent(QPaintEvent* event) override;

private:
    Placed<Banner> banner;
    std::map<int, Placed<FlashButton>> UserControl11;
    std::map<int, Placed<QFrame>> Frame2;
    std::int16_t lastPage;
    int shownPage = 0;
    /// The frame around the pages.
    QRect Shape1;
};

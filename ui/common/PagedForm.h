#pragma once

#include "ui/common/FlashButton.h"
#include "ui/common/Form.h"
#include "ui/common/headings.h"

#include <QFrame>

#include <cstdint>
#include <map>
#include <span>

/// A window of several pages, of which one shows: on the left a button for each.
class PagedForm : public Form {
public:
    struct Page {
        int index;
        const char* caption;
        Drawing icon;
        /// Of the button, in twips.
        int top;
    };
    struct Design {
        const char* caption;
        const char* subject;
        int width;
        int height;
        /// Of all pages.
        Twips frame;
        std::span<const Page> pages;
        /// The highest index that is looked for. Not every one up to it exists.
        std::int16_t lastPage;
    };

protected:
    explicit PagedForm(const Design& design);

    /// One of the pages that exist.
    [[nodiscard]] QWidget* page(int index) { return &Frame2.at(index); }
    /// Shows a page and hides all others.
    void showPage(int index);

    void paintEvent(QPaintEvent* event) override;

private:
    Placed<Banner> banner;
    std::map<int, Placed<FlashButton>> UserControl11;
    std::map<int, Placed<QFrame>> Frame2;
    std::int16_t lastPage;
    int shownPage = 0;
    /// What goes around the pages.
    QRect Shape1;
};

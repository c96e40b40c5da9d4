#pragma once

#include "ui/common/PagedForm.h"
#include "ui/common/labels.h"

#include <QPushButton>

#include <cstdint>

/// The window that explains what can be typed into a conversation. No setting changes it.
class frmhelp final : public PagedForm {
public:
    /// A hidden window that shows its first page.
    frmhelp();

protected:
    bool eventFilter(QObject* control, QEvent* event) override;

private:
    void addTitles();
    void addBullets();
    void showConstants(std::int16_t step);
    void FlashButton1_Click();

    /// The step of `helpTexts::constantSteps` that the next press of the button shows.
    std::int16_t constantStep = 1;

    Placed<TextLabel> Title1{page(1), "Title1", {180, 1065, 5040, 225}};
    Placed<TextLabel> Sub1{page(1), "Sub1", {180, 1290, 5040, 225}};
    Placed<TextLabel> Title2{page(1), "Title2", {180, 1560, 5040, 225}};
    Placed<TextLabel> sub2{page(1), "sub2", {180, 1785, 5040, 225}};
    Placed<TextLabel> Title3{page(1), "Title3", {180, 2055, 5040, 225}};
    Placed<TextLabel> sub3{page(1), "sub3", {180, 2280, 5040, 225}};
    Placed<FlashButton> FlashButton1{page(1), "FlashButton1", {3720, 2520, 1455, 615}};

    Placed<Picture> Image5{page(2), "Image5", {180, 2250, 225, 225}};
    Placed<Picture> Image3{this, "Image3", {180, 6075, 240, 240}};
    Placed<TextLabel> Label9{this,
                             "Label9",
                             {450, 6090, 6450, 225},
                             "Although commands are sent they are NOT visible to anyone but "
                             "yourself."};
    Placed<QPushButton> Command1{this, "Command1", {7080, 6000, 1215, 375}, "&OK"};
};

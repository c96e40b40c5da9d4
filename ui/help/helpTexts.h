#pragma once

#include "ui/common/PagedForm.h"
#include "ui/common/labels.h"

#include <array>
#include <span>

/// The texts of the help window.
namespace helpTexts {

/// The window's size, and its pages with their buttons.
extern const PagedForm::Design window;

/// What one page says, apart from the message constants.
struct PageText {
    /// The number of the page.
    int index;
    /// The text in the band at the top of the page.
    const char* title;
    std::span<const Caption> captions;
};
extern const std::span<const PageText> pageTexts;

/// A message constant and how to type it.
struct Row {
    const char* title;
    const char* text;
};
/// The page of the message constants has room for three; a button goes on to the next three.
extern const std::array<std::array<Row, 3>, 4> constantSteps;

}  // namespace helpTexts

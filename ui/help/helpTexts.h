#pragma once

#include "ui/common/PagedForm.h"
#include "ui/common/labels.h"

#include <array>
#include <span>

/// What stands still in the help window, and the steps of its one page that does not.
namespace helpTexts {

extern const PagedForm::Design window;

/// What one page says.
struct PageText {
    int index;
    /// In the picture at its top.
    const char* title;
    std::span<const Caption> captions;
};
extern const std::span<const PageText> pageTexts;

/// A message constant, or what there is to know on the machine.
struct Row {
    const char* title;
    const char* text;
};
extern const std::array<std::array<Row, 3>, 4> constantSteps;

}  // namespace helpTexts

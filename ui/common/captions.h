#pragma once

#include "ui/common/twips.h"

#include <span>

class QWidget;

/// A label that no code touches, as the design of a window has it.
struct Caption {
    const char* name;
    Twips place;
    const char* text;
    bool isHeading = false;
};

void addCaptions(QWidget* page, std::span<const Caption> captions);

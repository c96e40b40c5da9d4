#pragma once

#include "movies/qt/ShockwaveFlash.h"
#include "ui/common/Form.h"

#include <QPushButton>

/// The window that says what the program is. All of it is in its movie.
class frmabout final : public Form {
public:
    frmabout();

private:
    Placed<ShockwaveFlash> ShockwaveFlash1{this, "ShockwaveFlash1", {0, 0, 7410, 3495}};
    Placed<QPushButton> Command1{this, "Command1", {6240, 3600, 1095, 375}, "&OK"};
};

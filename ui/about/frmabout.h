#pragma once

#include "movies/qt/ShockwaveFlash.h"
#include "ui/common/Form.h"

#include <QPushButton>

#include <string_view>

/// The window that says what the program is. All of it is in its movie.
class frmabout final : public Form {
public:
    /// `howToConnect`, what to enter in Messenger at this moment, is its tool-tip.
    explicit frmabout(std::string_view howToConnect = {});

private:
    Placed<ShockwaveFlash> ShockwaveFlash1{this, "ShockwaveFlash1", {0, 0, 7410, 3495}};
    Placed<QPushButton> Command1{this, "Command1", {6240, 3600, 1095, 375}, "&OK"};
};

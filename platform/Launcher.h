#pragma once

#include "base/Event.h"

#include <memory>
#include <string_view>

/// The program's launcher on the desktop, which reaches the copy that runs.
class Launcher {
public:
    /// The launcher was clicked.
    Event<> activated;
    /// An entry of the launcher's menu was chosen; the name is the one that the entry was installed
    /// with, or anything else that another program says.
    Event<std::string_view> actionChosen;

    Launcher() = default;
    Launcher(const Launcher&) = delete;
    Launcher& operator=(const Launcher&) = delete;
    virtual ~Launcher() = default;

    /// From now on events are raised, unless another copy of the program has them; that one keeps
    /// them. Returns at once. Call it once.
    virtual void listen() = 0;
};

/// The launcher of the program that the desktop knows by this id. Where the desktop has no way to
/// reach a copy that runs, nothing ever happens to it.
[[nodiscard]] std::unique_ptr<Launcher> makeLauncher(std::string_view id);

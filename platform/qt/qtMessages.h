#pragma once

/// Sends the messages of Qt, as of a display that is gone, the way of `console::error`, by which
/// they neither block the program nor control a terminal. To be called before the `QApplication`
/// is made.
void sendQtMessagesToConsole();

#pragma once

#include <memory>

#include "window/commandLine.h"
#include "window/dialogs/clsDialogs.h"
#include "window/frmMain.h"

// The main window, on show, as the command line wants it. Null if it cannot be opened; a message has said
// why.
[[nodiscard]] std::unique_ptr<frmMain> openWindow(const WindowOptions& options, clsDialogs& dialogs);

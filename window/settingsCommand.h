#pragma once

#include <string>

#include "base/clsRegSettings.h"
#include "base/clsSettings.h"
#include "base/settingsSheet.h"
#include "window/dialogs/clsDialogs.h"
#include "window/figureNotices.h"
#include "window/folderHeader.h"
#include "window/menu/popMenu.h"
#include "window/tabs/viewTabs.h"

// The command that shows the settings, and what follows at once from those that were changed.
class SettingsCommand {
public:
    // Nothing is owned.
    struct Dependencies {
        PopMenu& menu;
        clsSettings& settings;
        const clsRegSettings& store;
        const std::string& applicationFolder;
        clsDialogs& dialogs;
        ViewTabs& views;
        FigureNotices& notices;
        FolderHeader& header;
    };

    explicit SettingsCommand(const Dependencies& dependencies) : dependencies_(dependencies) {}

    void run();

private:
    void follow(const SettingsSheet& sheet);

    Dependencies dependencies_;
};

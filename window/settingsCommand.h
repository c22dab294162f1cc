#pragma once

#include <QShortcut>
#include <QWidget>
#include <string>

#include "base/clsRegSettings.h"
#include "base/clsSettings.h"
#include "base/settingsSheet.h"
#include "window/dialogs/clsDialogs.h"
#include "window/figureNotices.h"
#include "window/menu/popMenu.h"
#include "window/tabs/viewTabs.h"

// The command that shows the settings, with its key, and what follows at once from those that were changed.
class SettingsCommand {
public:
    // Nothing is owned.
    struct Dependencies {
        QWidget& window;
        PopMenu& menu;
        clsSettings& settings;
        const clsRegSettings& store;
        const std::string& applicationFolder;
        clsDialogs& dialogs;
        ViewTabs& views;
        FigureNotices& notices;
    };

    explicit SettingsCommand(const Dependencies& dependencies);

    void run();

private:
    void follow(const SettingsSheet& sheet);

    Dependencies dependencies_;
    QShortcut key_;
};

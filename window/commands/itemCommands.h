#pragma once

#include <string>
#include <vector>

#include "base/clsRegSettings.h"
#include "base/clsSettings.h"
#include "base/clsUserInterface.h"
#include "db/workingDatabase.h"
#include "export/clipboard.h"
#include "tree/folderSelection.h"
#include "window/dialogs/clsDialogs.h"

// What can be done with files and folders that a list, the tree or the chart shows. Errors are logged.
class ItemCommands {
public:
    // Internal paths; a folder's ends in "\", a file's does not.
    using Items = std::vector<std::string>;

    // Nothing is owned.
    struct Dependencies {
        FolderSelection& selection;
        const clsSearch& search;
        clsSettings& settings;
        const clsRegSettings& store;
        const WorkingDatabase& database;
        clsUserInterface& userInterface;
        clsDialogs& dialogs;
        modExport::Clipboard& clipboard;
    };

    explicit ItemCommands(const Dependencies& dependencies) : dependencies_(dependencies) {}

    // Which of the commands make sense for the items: of what was loaded, only opening and copying the path,
    // as it may be on another machine, and scanning those folders again that are on this one, too.
    struct Offer {
        bool open = false;
        bool show = false;
        bool copyPath = false;
        bool properties = false;
        bool scanAgain = false;
        bool trash = false;
        bool exclude = false;
    };
    [[nodiscard]] Offer offerFor(const Items& items) const;

    // Says that they are no longer there.
    void tellGone(const Items& items) const;

    // Goes to a single folder, or opens files in their applications.
    void open(const Items& items);
    void showInFileManager(const Items& items);
    // One line for each, as the system writes it.
    void copyPath(const Items& items);
    void showProperties(const Items& items);
    // The folders among them.
    void scanAgain(const Items& items);
    // Asks first. What could not be moved is named in a message.
    void moveToTrash(const Items& items);
    // From this and later scans: their paths become patterns of the settings, and their rows go.
    void exclude(const Items& items);

private:
    [[nodiscard]] bool isLoaded(const std::string& item) const;
    [[nodiscard]] bool isHereNow(const std::string& folder) const;
    [[nodiscard]] double sizeOf(const std::string& item) const;
    [[nodiscard]] std::string keepExcluded(const std::string& item, Excludes& excludes) const;
    [[nodiscard]] std::string question(const Items& items) const;

    Dependencies dependencies_;
};

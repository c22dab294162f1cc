#pragma once

#include <QSettings>
#include <string>

#include "db/workingDatabase.h"
#include "scan/clsSearch.h"
#include "tree/folderSelection.h"
#include "tree/folderTree.h"
#include "window/menu/popMenu.h"

// The switch "Sizes in the Tree": the size of each scanned folder behind its name.
class TreeSizes {
public:
    // Nothing is owned.
    struct Dependencies {
        FolderTree& tree;
        PopMenu& menu;
        const WorkingDatabase& database;
        const clsSearch& search;
        const FolderSelection& selection;
    };

    explicit TreeSizes(const Dependencies& dependencies) : dependencies_(dependencies) {}

    void toggle() { set(!shown_); }

    // The figures may have changed.
    void refresh();

    // In the window's own settings file.
    void restore(const QSettings& state);
    void save(QSettings& state) const;

private:
    void set(bool shown);
    [[nodiscard]] QString sizeOf(const std::string& key) const;

    Dependencies dependencies_;
    bool shown_ = false;
};

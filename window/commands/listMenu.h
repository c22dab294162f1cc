#pragma once

#include <functional>
#include <string>

class FolderTree;
class ListView;
class ViewTabs;
class WorkingDatabase;
class clsSettings;
class clsUserInterface;

namespace modExport {
class Clipboard;
}

// The commands of the lists' context menu, for the list on the active tab.
class ListMenu {
public:
    // The indexes of the menu's items.
    static constexpr int exportItem = 1;
    static constexpr int copyItem = 2;

    // The objects that it uses, none of them owned; the function returns the name of the workbook to write.
    struct Dependencies {
        const FolderTree& tree;
        ViewTabs& views;
        const clsSettings& settings;
        const WorkingDatabase& database;
        clsUserInterface& userInterface;
        modExport::Clipboard& clipboard;
        std::function<std::string()> workbookName;
    };

    explicit ListMenu(Dependencies dependencies);

    // Handles a click on the menu: exports the whole list to the spreadsheet application, or copies it to the
    // clipboard. Does nothing while the chart is shown. Errors are logged.
    void cPLvw_Click(int index);

    // Copies the selected rows, or the whole list if there are fewer than two.
    void copySelection();

private:
    void copy(const ListView& list, bool onlySelected);
    [[nodiscard]] std::string caption() const;

    Dependencies dependencies_;
};

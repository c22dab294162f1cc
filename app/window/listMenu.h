#pragma once

#include <functional>
#include <string>

class FolderTree;
class ViewTabs;
class clsUserInterface;

namespace modExport {
class Clipboard;
}

// What the context menu of the lists does with the list that is on show.
class ListMenu {
public:
    // The menu's items, by their index.
    static constexpr int exportItem = 1;
    static constexpr int copyItem = 2;

    // What it reads, shows and writes to. Nothing is owned; the function names the workbook to be written.
    struct Surroundings {
        const FolderTree& tree;
        ViewTabs& views;
        clsUserInterface& userInterface;
        modExport::Clipboard& clipboard;
        std::function<std::string()> workbookName;
    };

    explicit ListMenu(Surroundings surroundings);

    // A click on the menu: sends the whole list to the spreadsheet program, or to the clipboard. Does nothing
    // while the chart is on show. Errors are logged.
    void cPLvw_Click(int index);

private:
    [[nodiscard]] std::string caption() const;

    Surroundings with_;
};

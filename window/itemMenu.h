#pragma once

#include <QObject>
#include <QPoint>
#include <QShortcut>
#include <QWidget>
#include <memory>
#include <string_view>
#include <vector>

#include "base/clsSettings.h"
#include "tree/folderTree.h"
#include "window/commands/itemCommands.h"
#include "window/menu/popMenu.h"
#include "window/tabs/viewTabs.h"

// The commands for files and folders in the menus and on the keyboard: finds out which items are meant, shows
// what makes sense for them, and runs it.
class ItemMenu final : public QObject {
    Q_OBJECT

public:
    // Nothing is owned. The menus have been made when the first of them is shown.
    struct Dependencies {
        QWidget& window;
        PopMenu& cP;
        PopMenu& cPLvw;
        PopMenu& cPItem;
        FolderTree& tree;
        ViewTabs& views;
        const clsSettings& settings;
        ItemCommands& commands;
    };

    explicit ItemMenu(const Dependencies& dependencies);
    ~ItemMenu() override;

    // To be called when the menus have been made.
    void connectMenus();

    // Runs the command with this key of a menu item, ignoring case, on the items that the menu was opened
    // for, or on those that are selected where the focus is. False if it is none of these commands.
    bool run(std::string_view key);

    // The context menu of the lists; for those that do not show files, without commands for them.
    void popUpForList(const QPoint& place);

private:
    using Items = ItemCommands::Items;

    void popUp(Items items, const QPoint& place, bool isGone = false);
    void offer(PopMenu& menu, const Items& items, bool areGone, bool isForFiles = true);
    void addKey(const QKeySequence& keys, const char* key, QWidget& where, Qt::ShortcutContext context);
    void showCopyKey();
    [[nodiscard]] Items selectedItems() const;
    [[nodiscard]] bool isNoneMeant() const;
    [[nodiscard]] bool showsItems(const QWidget* list) const;
    [[nodiscard]] Items itemsOfList() const;
    [[nodiscard]] bool isGoneInList() const;
    [[nodiscard]] bool isGoneInChart(int index) const;
    [[nodiscard]] bool isGoneSelected() const;
    [[nodiscard]] static Items itemsOfTree(const std::string& key);
    [[nodiscard]] Items itemsOfChart(int index) const;
    [[nodiscard]] Items itemsOfTreemap() const;

    Dependencies dependencies_;
    Items opened_;               // what a context menu was opened for
    bool areOpenedGone_ = false; // some of them
    bool isOpened_ = false;      // until its command has run, or it is closed
    std::vector<std::unique_ptr<QShortcut>> keys_;
};

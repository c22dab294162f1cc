#pragma once

#include <string_view>

class clsSettings;
class ImageList;
class PopMenu;
class QWidget;

// The main window's menus.
namespace modMenus {

// Fills the menus, once per run: `cP` with the main menu, stored as "Outer", `cPLvw`, the context menu of the
// lists, and `cPItem`, that of the tree and the chart. The check marks of ShowOwners and ExactFigures show
// the settings. Pictures come from `imlMenu`, by index. Errors are logged.
void createMenus(PopMenu& cP, PopMenu& cPLvw, PopMenu& cPItem, QWidget& window, const ImageList& imlMenu,
                 const clsSettings& settings);

// The check mark of the items with this key.
void setMark(PopMenu& cP, std::string_view key, bool marked);

// Enables or disables the items with this key.
void setItemEnabled(PopMenu& cP, std::string_view key, bool enabled);

// Enables or disables the main menu's commands that need the rows for themselves: those that export and load,
// OpenRecent, CompareScan, ExactFigures and Settings, with which a scan would stand still.
void setRowCommandsEnabled(PopMenu& cP, bool enabled);

} // namespace modMenus

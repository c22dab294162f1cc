#pragma once

class clsSettings;
class ImageList;
class PopMenu;
class QWidget;

// The main window's menus.
namespace modMenus {

// Fills both menus, once per run: `cP` with the main menu, stored as "Outer", and `cPLvw`, the context menu
// of the lists. The check mark of ShowOwners shows the setting. Pictures come from `imlMenu`, by index.
// Errors are logged.
void createMenus(PopMenu& cP, PopMenu& cPLvw, QWidget& window, const ImageList& imlMenu,
                 const clsSettings& settings);

// Enables or disables the main menu's commands that export and load.
void setExportsEnabled(PopMenu& cP, bool enabled);

} // namespace modMenus

#pragma once

class clsSettings;
class ImageList;
class PopMenu;
class QWidget;

// The main window's menus.
namespace modMenus {

// Fills both menus, once per run: `cP` with the main menu, stored under "Outer", and `cPLvw`, the context
// menu of the lists. The check mark of ShowOwners is that of the setting. Pictures come from `imlMenu`, by
// index. Errors are logged.
void createMenus(PopMenu& cP, PopMenu& cPLvw, QWidget& window, const ImageList& imlMenu,
                 const clsSettings& settings);

// Greys the main menu's commands that export and load, or makes them available again.
void setExportsEnabled(PopMenu& cP, bool enabled);

} // namespace modMenus

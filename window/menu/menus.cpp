#include "window/menu/menus.h"

#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "base/clsSettings.h"
#include "base/errorTrap.h"
#include "window/menu/popMenu.h"

namespace modMenus {

namespace {

enum class Mark { none, off, on, owners, exact, onDisk };

struct MenuItem {
    std::size_t level; // 0 is on the menu bar; otherwise below the last item one level up
    const char* key;
    const char* caption;
    int icon = PopMenu::noIcon;
    Mark mark = Mark::none;
    const char* shortcut = "";
    bool takesShortcut = false; // otherwise the keys are somebody else's
};

// Odd on purpose: the captions of the first View items end in a tab; two of them have a blank before it; the
// separators of View have the same key; two items of File have no access key.
constexpr std::array<MenuItem, 56> mainMenu{{
    {0, "", "&File"},
    {1, "Export", "&Export Data", 1},
    {2, "ExportXML", "&XML File...", 4},
    {2, "ExportHTML", "&HTML File...", 5},
    {2, "ExportText", "&Text File...", 6},
    {2, "ExportExcel", "&Excel File...", 7},
    {2, "ExportMDB", "&Access Database...", 12},
    {2, "ExportOverview", "&Overview Page...", 5},
    {1, "ExportChart", "&Export Chart", 11},
    {2, "ExportChartEntire", "&Entire Chart...", 11},
    {2, "ExportChartVisible", "&Visible Portion Only...", 11},
    {1, "Spacer0", "-"},
    {1, "LoadMDB", "Load from Access Database...", 12, Mark::none, "Ctrl+O", true},
    {1, "OpenRecent", "Open &Recent"},
    {1, "CompareScan", "&Compare with Saved Scan..."},
    {1, "CloseComparison", "C&lose Comparison"},
    {1, "History", "&History..."},
    {1, "LoadServer", "Load from Ser&ver..."},
    {1, "SettingsSpacer", "-"},
    {1, "Settings", "&Settings...", PopMenu::noIcon, Mark::none, "Ctrl+,", true},
    {1, "Spacer2", "-"},
    {1, "ExitApp", "Exit", PopMenu::noIcon, Mark::none, "Ctrl+Q", true},
    {0, "", "&View"},
    {1, "Refresh", "&Refresh [F5]\t", 13},
    {1, "CancelScan", "&Cancel Scan \t", 10, Mark::none, "Esc"},
    {1, "Spacer1", "-"},
    {1, "ViewBarChart", "&Bar Chart\t", 14, Mark::on, "Ctrl+1", true},
    {1, "ViewPieChart", "&Pie Chart\t", 11, Mark::off, "Ctrl+2", true},
    {1, "Spacer1", "-"},
    {1, "ShowOwners", "&File Owners (Slower Scan) \t", 15, Mark::owners},
    {1, "Spacer1", "-"},
    {1, "ExactFigures", "E&xact Figures", PopMenu::noIcon, Mark::exact},
    {1, "UnreadableFolders", "&Unreadable Folders..."},
    {1, "Spacer1", "-"},
    {1, "GoUp", "Up One &Level", 20, Mark::none, "Alt+Up"},
    {1, "GoBack", "Bac&k", 18, Mark::none, "Alt+Left"},
    {1, "GoForward", "For&ward", 19, Mark::none, "Alt+Right"},
    {1, "Spacer1", "-"},
    {1, "TreeSizes", "&Sizes in the Tree", PopMenu::noIcon, Mark::off},
    {1, "ViewTreemap", "&Treemap", PopMenu::noIcon, Mark::off, "Ctrl+3", true},
    {1, "FilterList", "F&ilter the List", PopMenu::noIcon, Mark::none, "Ctrl+F", true},
    {1, "SizeOnDisk", "Size on &Disk", PopMenu::noIcon, Mark::onDisk},
    {1, "ViewChanges", "Chart of Chan&ges", PopMenu::noIcon, Mark::off, "Ctrl+4", true},
    {0, "Item", "&Item"},
    {1, "ItemOpen", "&Open", PopMenu::noIcon, Mark::none, "Enter"},
    {1, "ItemShow", "&Show in File Manager", PopMenu::noIcon, Mark::none, "Ctrl+Enter"},
    {1, "ItemCopyPath", "Copy Pat&h", PopMenu::noIcon, Mark::none, "Ctrl+Shift+C"},
    {1, "ItemProperties", "&Properties", PopMenu::noIcon, Mark::none, "Alt+Enter"},
    {1, "ItemScanAgain", "Scan &Again"},
    {1, "ItemTrashSpacer", "-"},
    {1, "ItemTrash", "&Move to Trash...", PopMenu::noIcon, Mark::none, "Del"},
    {1, "ItemExclude", "E&xclude from Scans"},
    {0, "", "&Help"},
    {1, "HelpContents", "&Contents", 16, Mark::none, "F1"},
    {1, "HelpSpacer0", "-"},
    {1, "HelpAbout", "&About", 17},
}};

const QString exactFigures = QStringLiteral("ExactFigures");
constexpr std::string_view openRecent = "OpenRecent";

// Odd on purpose: the keys are also used in the main menu; clicks here go to another handler.
constexpr std::array<MenuItem, 3> listMenu{{
    {0, "ExportExcel", "&Export Entire List to Excel", 7},
    {0, "ExportText", "&Copy Entire List to Clipboard", 6, Mark::none, "Ctrl+C"},
    {0, "ItemSpacer", "-"},
}};

// The items of the main menu's Item, for context menus.
std::vector<MenuItem> itemMenu() {
    std::vector<MenuItem> items;
    for (const MenuItem& item : mainMenu) {
        if (item.level == 1 && std::string_view(item.key).starts_with("Item")) {
            items.push_back(item);
            items.back().level = 0;
        }
    }
    return items;
}

bool isMarked(Mark mark, const clsSettings& settings) {
    return mark == Mark::on || (mark == Mark::owners && settings.getOwnerInfo()) ||
           (mark == Mark::exact && settings.exact()) || (mark == Mark::onDisk && settings.onDisk());
}

void addItems(PopMenu& menu, std::span<const MenuItem> items, const clsSettings& settings) {
    std::array<int, 4> parents{PopMenu::topLevel}; // the index of the parent for each level
    for (const MenuItem& item : items) {
        const bool checked = isMarked(item.mark, settings);
        const int index = menu.addItem({.caption = QString::fromUtf8(item.caption),
                                        .parentIndex = parents.at(item.level),
                                        .iconIndex = item.icon,
                                        .checked = checked,
                                        .key = QString::fromUtf8(item.key),
                                        .shortcut = QString::fromUtf8(item.shortcut),
                                        .takesShortcut = item.takesShortcut,
                                        .opensMenu = item.key == openRecent});
        if (item.mark != Mark::none) {
            menu.setChecked(index, checked);
        }
        parents.at(item.level + 1) = index;
    }
}

} // namespace

void createMenus(PopMenu& cP, PopMenu& cPLvw, PopMenu& cPItem, QWidget& window, const ImageList& imlMenu,
                 const clsSettings& settings) {
    modGlobal::trapped("frmMain", "createMenus", [&] {
        cP.bind(window, imlMenu);
        addItems(cP, mainMenu, settings);
        cP.store(QStringLiteral("Outer"));

        cPLvw.bind(window, imlMenu);
        addItems(cPLvw, listMenu, settings);
        addItems(cPLvw, itemMenu(), settings);

        cPItem.bind(window, imlMenu);
        addItems(cPItem, itemMenu(), settings);
    });
}

void setMark(PopMenu& cP, std::string_view key, bool marked) {
    for (int index = 1; index <= cP.count(); ++index) {
        if (cP.itemKey(index).toStdString() == key) {
            cP.setChecked(index, marked);
        }
    }
}

void setItemEnabled(PopMenu& cP, std::string_view key, bool enabled) {
    for (int index = 1; index <= cP.count(); ++index) {
        if (cP.itemKey(index).toStdString() == key) {
            cP.setEnabled(index, enabled);
        }
    }
}

void setRowCommandsEnabled(PopMenu& cP, bool enabled) {
    for (int index = 1; index <= cP.count(); ++index) {
        const QString key = cP.itemKey(index);
        if (key.startsWith(QStringLiteral("Export")) || key.startsWith(QStringLiteral("Load")) ||
            key == QStringLiteral("CompareScan") || key == exactFigures ||
            key == QStringLiteral("Settings") || key.toStdString() == openRecent) {
            cP.setEnabled(index, enabled);
        }
    }
}

} // namespace modMenus

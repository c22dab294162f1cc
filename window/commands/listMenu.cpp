#include "window/commands/listMenu.h"

#include <array>
#include <string_view>
#include <utility>

#include "base/clsSettings.h"
#include "base/errorTrap.h"
#include "db/workingDatabase.h"
#include "export/listClipboard.h"
#include "export/listWorkbook.h"
#include "platform/paths.h"
#include "tree/folderTree.h"
#include "window/commands/shownList.h"
#include "window/tabs/viewTabs.h"

ListMenu::ListMenu(Dependencies dependencies) : dependencies_(std::move(dependencies)) {}

void ListMenu::cPLvw_Click(int index) {
    modGlobal::trapped("frmMain", "cPLvw_Click", [&] {
        const ListView* const list = dependencies_.views.activeList();
        if (list == nullptr) {
            return;
        }
        const ViewTabs::Hold hold(dependencies_.views);
        if (index == exportItem) {
            modGlobal::printToExcel(ShownList(list->rows()), caption(), dependencies_.userInterface,
                                    dependencies_.workbookName());
        } else if (index == copyItem) {
            copy(*list, false);
        }
    });
}

void ListMenu::copySelection() {
    modGlobal::trapped("frmMain", "copySelection", [&] {
        if (const ListView* const list = dependencies_.views.activeList()) {
            const ViewTabs::Hold hold(dependencies_.views);
            copy(*list, list->selectedRows().size() > 1);
        }
    });
}

void ListMenu::copy(const ListView& list, bool onlySelected) {
    const ShownList table(list.rows(), onlySelected ? std::optional(list.selectedRows()) : std::nullopt);
    modGlobal::copyClipboardLvw(
        table, dependencies_.userInterface, dependencies_.clipboard, dependencies_.settings.exact(),
        dependencies_.database.holdsLoadedRows() || dependencies_.views.listsSavedRows());
}

// The kind of list, and the folder that it shows.
std::string ListMenu::caption() const {
    constexpr std::array<std::string_view, 6> prefixes{"",          "Details - ", "File Types - ",
                                                       "Owners - ", "Find - ",    "Changes - "};
    const int tab = dependencies_.views.tabs().currentIndex();
    std::string result(prefixes.at(static_cast<std::size_t>(tab)));
    platform::appendDisplayPath(result, dependencies_.views.listedFolder());
    return result;
}

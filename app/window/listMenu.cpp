#include "app/window/listMenu.h"

#include <array>
#include <string_view>
#include <utility>

#include "app/errorLog.h"
#include "app/window/shownList.h"
#include "app/window/viewTabs.h"
#include "export/listClipboard.h"
#include "export/listWorkbook.h"
#include "platform/paths.h"
#include "tree/folderTree.h"

ListMenu::ListMenu(Surroundings surroundings) : with_(std::move(surroundings)) {}

void ListMenu::cPLvw_Click(int index) {
    modGlobal::trapped("frmMain", "cPLvw_Click", [&] {
        const ListView* const list = with_.views.activeList();
        if (list == nullptr) {
            return;
        }
        const ViewTabs::Hold hold(with_.views);
        const ShownList table(list->rows());
        if (index == exportItem) {
            modGlobal::printToExcel(table, caption(), with_.userInterface, with_.workbookName());
        } else if (index == copyItem) {
            modGlobal::copyClipboardLvw(table, with_.userInterface, with_.clipboard);
        }
    });
}

// What kind of list of which folder it is.
std::string ListMenu::caption() const {
    constexpr std::array<std::string_view, 4> prefixes{"", "Details - ", "File Types - ", "Owners - "};
    const int tab = with_.views.tabs().currentIndex();
    std::string result(prefixes.at(static_cast<std::size_t>(tab)));
    platform::appendDisplayPath(result, with_.tree.selectedKey());
    return result;
}

#include "export/listClipboard.h"

#include <string>

#include "app/clsConcat.h"
#include "app/clsUserInterface.h"
#include "app/errorLog.h"
#include "export/clipboard.h"
#include "export/listTable.h"

namespace {

using modExport::ListTable;

std::string listText(const ListTable& list, ShownProgress& progress) {
    clsConcat text;
    const std::size_t columns = list.columns().size();
    for (std::size_t column = 0; column < columns; ++column) {
        text.SConcat(column == 0 ? "" : ",");
        text.SConcat(list.columns()[column].header);
    }
    for (std::size_t row = 0; row < list.rowCount(); ++row) {
        for (std::size_t column = 0; column < columns; ++column) {
            text.SConcat(column == 0 ? "\r\n" : ",");
            text.SConcat(list.text(row, column));
        }
        progress.step();
    }
    return text.GetString();
}

} // namespace

void modGlobal::copyClipboardLvw(const ListTable& list, clsUserInterface& userInterface,
                                 modExport::Clipboard& clipboard) {
    trapped("modGlobal", "copyClipboardLvw", [&] {
        if (list.rowCount() == 0) {
            userInterface.message(modExport::emptyListMessage);
            return;
        }
        const BusyPointer busy(userInterface);
        ShownProgress progress(userInterface, static_cast<std::int64_t>(list.rowCount()));
        clipboard.clear();
        clipboard.setText(listText(list, progress));
    });
}

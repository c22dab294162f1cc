#include "export/listClipboard.h"

#include <string>

#include "base/clsConcat.h"
#include "base/clsUserInterface.h"
#include "base/errorTrap.h"
#include "export/clipboard.h"
#include "export/csvText.h"
#include "export/listTable.h"

namespace {

using modExport::ListTable;

// Odd on purpose: a cell is quoted only if its line breaks or quotes would swallow rows; an exact text quotes
// every cell that needs it.
bool needsQuotes(std::string_view cell, bool exact) {
    if (exact) {
        return cell.find_first_of(",\"\r\n") != std::string_view::npos;
    }
    return cell.starts_with('"') || cell.find(",\"") != std::string_view::npos ||
           cell.find_first_of("\r\n") != std::string_view::npos;
}

using Write = std::function<void(std::string_view)>;

void writeCell(const Write& write, std::string_view cell, bool exact) {
    if (!needsQuotes(cell, exact)) {
        write(cell);
        return;
    }
    std::string quoted = "\"";
    modExport::appendQuotesDoubled(quoted, cell, "\"");
    write(quoted.append("\""));
}

} // namespace

void modExport::writeListText(const ListTable& list, ShownProgress& progress, bool exact, bool areLoaded,
                              const Write& write) {
    const std::size_t columns = list.columns().size();
    for (std::size_t column = 0; column < columns; ++column) {
        write(column == 0 ? "" : ",");
        write(list.columns()[column].header);
    }
    for (std::size_t row = 0; row < list.rowCount(); ++row) {
        for (std::size_t column = 0; column < columns; ++column) {
            write(column == 0 ? "\r\n" : ",");
            const ListTable::Kind kind = list.columns()[column].kind;
            const bool isStored = kind == ListTable::Kind::text || kind == ListTable::Kind::date;
            if (areLoaded && isStored) {
                writeCell(write, modExport::withoutFormula(list.text(row, column)), true);
            } else {
                writeCell(write, list.text(row, column), exact);
            }
        }
        progress.step();
    }
}

void modGlobal::copyClipboardLvw(const ListTable& list, clsUserInterface& userInterface,
                                 modExport::Clipboard& clipboard, bool exact, bool areLoaded) {
    trapped("modGlobal", "copyClipboardLvw", [&] {
        if (list.rowCount() == 0) {
            userInterface.message(modExport::emptyListMessage);
            return;
        }
        const BusyPointer busy(userInterface);
        ShownProgress progress(userInterface, static_cast<std::int64_t>(list.rowCount()));
        clipboard.clear();
        clsConcat text;
        modExport::writeListText(list, progress, exact, areLoaded,
                                 [&](std::string_view piece) { text.SConcat(piece); });
        clipboard.setText(text.GetString());
    });
}

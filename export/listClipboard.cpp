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

void appendCell(clsConcat& text, std::string_view cell, bool exact) {
    if (!needsQuotes(cell, exact)) {
        text.SConcat(cell);
        return;
    }
    std::string quoted = "\"";
    modExport::appendQuotesDoubled(quoted, cell, "\"");
    text.SConcat(quoted.append("\""));
}

} // namespace

std::string modExport::listText(const ListTable& list, ShownProgress& progress, bool exact, bool areLoaded) {
    clsConcat text;
    const std::size_t columns = list.columns().size();
    for (std::size_t column = 0; column < columns; ++column) {
        text.SConcat(column == 0 ? "" : ",");
        text.SConcat(list.columns()[column].header);
    }
    for (std::size_t row = 0; row < list.rowCount(); ++row) {
        for (std::size_t column = 0; column < columns; ++column) {
            text.SConcat(column == 0 ? "\r\n" : ",");
            const ListTable::Kind kind = list.columns()[column].kind;
            const bool isStored = kind == ListTable::Kind::text || kind == ListTable::Kind::date;
            if (areLoaded && isStored) {
                appendCell(text, modExport::withoutFormula(list.text(row, column)), true);
            } else {
                appendCell(text, list.text(row, column), exact);
            }
        }
        progress.step();
    }
    return text.GetString();
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
        clipboard.setText(modExport::listText(list, progress, exact, areLoaded));
    });
}

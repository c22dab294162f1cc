#pragma once

#include <functional>
#include <string_view>

class clsUserInterface;
class ShownProgress;

namespace modExport {

class Clipboard;
class ListTable;

// Passes on that text, piece by piece.
void writeListText(const ListTable& list, ShownProgress& progress, bool exact, bool areLoaded,
                   const std::function<void(std::string_view)>& write);

} // namespace modExport

namespace modGlobal {

// Copies the whole list to the clipboard as lines of text, headers first: cells are joined by commas, lines
// by CR LF. Odd on purpose: commas are not quoted, so a comma in a name shifts the columns after it. Only a
// cell with a line break, or with a quote at its start, is put in quotes, with its own quotes doubled. An
// exact text follows RFC 4180, with every such cell in quotes, and so do the cells of loaded rows (Database),
// of which none is a formula to a spreadsheet program. For an empty list, a message is shown and the
// clipboard stays unchanged; errors are logged and may leave it empty.
void copyClipboardLvw(const modExport::ListTable& list, clsUserInterface& userInterface,
                      modExport::Clipboard& clipboard, bool exact, bool areLoaded = false);

} // namespace modGlobal

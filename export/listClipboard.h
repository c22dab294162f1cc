#pragma once

#include <string>

class clsUserInterface;
class ShownProgress;

namespace modExport {

class Clipboard;
class ListTable;

// The list as that text.
[[nodiscard]] std::string listText(const ListTable& list, ShownProgress& progress, bool exact,
                                   bool areLoaded);

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

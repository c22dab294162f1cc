#pragma once

class clsUserInterface;

namespace modExport {
class Clipboard;
class ListTable;
} // namespace modExport

namespace modGlobal {

// Puts the whole list on the clipboard as lines of text, headers first: cells joined by commas, lines by CR
// LF. Deliberately nothing is quoted: a comma in a name shifts the columns behind it. An empty list is told
// in a message and leaves the clipboard as it was; errors are logged and may leave it empty.
void copyClipboardLvw(const modExport::ListTable& list, clsUserInterface& userInterface,
                      modExport::Clipboard& clipboard);

} // namespace modGlobal

#pragma once

#include <string_view>

class ShownProgress;

namespace platform {
class Sink;
}

namespace modExport {

class ListTable;

// Writes the list as <list><caption>…</caption><row>…</row>…</list>, row by row. Each cell that is not empty
// is an element, called after its column: the letters of "Before (Bytes)" make "beforeBytes".
void writeListXml(const ListTable& list, std::string_view caption, ShownProgress& progress,
                  platform::Sink& sink);

} // namespace modExport

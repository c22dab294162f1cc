#include "export/listXml.h"

#include <string>
#include <vector>

#include "base/clsUserInterface.h"
#include "export/listTable.h"
#include "export/xmlText.h"
#include "platform/files.h"
#include "platform/text.h"

namespace modExport {

namespace {

std::string elementName(std::string_view header) {
    std::string name;
    bool startsWord = false;
    for (const char c : header) {
        const char lower = platform::asciiLower(c);
        const bool isLetter = lower >= 'a' && lower <= 'z';
        if (isLetter) {
            name.push_back(startsWord && !name.empty() ? c : lower);
        }
        startsWord = !isLetter;
    }
    return name;
}

void appendElement(std::string& xml, const std::string& name, std::string_view text) {
    std::string held(text);
    moveForbiddenCharacters(held, Document::xml);
    xml.append("<").append(name).append(">");
    appendXmlEscaped(xml, held);
    xml.append("</").append(name).append(">");
}

} // namespace

void writeListXml(const ListTable& list, std::string_view caption, ShownProgress& progress,
                  platform::Sink& sink) {
    std::vector<std::string> names;
    for (const ListTable::Column& column : list.columns()) {
        names.push_back(elementName(column.header));
    }
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<list>";
    appendElement(xml, "caption", caption);
    sink.write(xml.append("\n"));
    for (std::size_t row = 0; row < list.rowCount(); ++row) {
        xml.assign("<row>");
        for (std::size_t column = 0; column < names.size(); ++column) {
            if (const std::string_view text = list.text(row, column); !text.empty()) {
                appendElement(xml, names[column], text);
            }
        }
        sink.write(xml.append("</row>\n"));
        progress.step();
    }
    sink.write("</list>\n");
}

} // namespace modExport

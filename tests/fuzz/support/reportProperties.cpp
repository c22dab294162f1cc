#include "fuzz/support/reportProperties.h"

#include <algorithm>
#include <cstring>
#include <pugixml.hpp>
#include <string>

#include "fuzz/support/require.h"
#include "support/zipPart.h"

namespace {

std::size_t countOf(std::string_view text, std::string_view piece) {
    std::size_t count = 0;
    for (std::size_t at = text.find(piece); at != std::string_view::npos; at = text.find(piece, at + 1)) {
        ++count;
    }
    return count;
}

void requireXml(std::string_view document, const char* property, pugi::xml_document& parsed) {
    require(parsed.load_buffer(document.data(), document.size(), pugi::parse_full, pugi::encoding_utf8),
            property);
    require(isUtf8(document), "a document is valid UTF-8");
    require(std::all_of(document.begin(), document.end(),
                        [](char c) { return c < 0 || c >= 0x20 || c == '\t' || c == '\n' || c == '\r'; }),
            "a document has no control characters");
}

// Takes one field from the text's start, without its quotes.
std::string takeField(std::string_view& text, bool mustBeQuoted) {
    std::string field;
    if (!text.starts_with('"')) {
        require(!mustBeQuoted, "a field begins with a quote");
        const std::size_t end = std::min(text.find_first_of(",\r\n"), text.size());
        field = text.substr(0, end);
        require(field.find('"') == std::string::npos, "a plain field has no quotes");
        text.remove_prefix(end);
        return field;
    }
    text.remove_prefix(1);
    for (;;) {
        const std::size_t quote = text.find('"');
        require(quote != std::string_view::npos, "a field ends with a quote");
        field.append(text.substr(0, quote));
        text.remove_prefix(quote + 1);
        if (!text.starts_with('"')) {
            return field;
        }
        field.push_back('"');
        text.remove_prefix(1);
    }
}

// Even a negative size.
bool isSize(std::string_view text) {
    const std::size_t unit = std::min(text.find(' '), text.size());
    const std::string_view units = " bytes Kb Mb Gb ";
    return text.substr(0, unit).find_first_not_of("0123456789-+.,E") == std::string_view::npos &&
           (unit == text.size() ||
            units.find(std::string(text.substr(unit)) + " ") != std::string_view::npos);
}

} // namespace

void requireSoundPage(std::string_view page, std::size_t rows, std::string_view benign,
                      std::string_view twice, bool exact) {
    const std::size_t breaks = countOf(page, "<BR>");
    for (const std::string_view piece : {"<", ">", "\"", "\n", "\r"}) {
        const std::size_t perRow = countOf(twice, piece) - countOf(benign, piece);
        const std::size_t expected = countOf(benign, piece) - perRow + rows * perRow;
        require(countOf(page, piece) == expected + (piece == "<" || piece == ">" ? breaks : 0),
                "no value brings in markup or a line");
    }
    if (!exact) {
        return;
    }
    require(breaks == 0 && isUtf8(page), "an exact page is valid UTF-8");
    for (std::size_t at = page.find('&'); at != std::string_view::npos; at = page.find('&', at + 1)) {
        const std::string_view entity = page.substr(at, page.find(';', at) - at);
        constexpr std::string_view known = " &amp &lt &gt &quot &#9 &#10 ";
        require(known.find(" " + std::string(entity) + " ") != std::string_view::npos,
                "every & is that of an entity");
    }
}

void requireSoundCsv(std::string_view text, std::size_t rows, std::size_t columns, bool allQuoted) {
    for (std::size_t row = 0; row <= rows; ++row) {
        for (std::size_t column = 0; column < columns; ++column) {
            const std::string field = takeField(text, allQuoted);
            require(field.find_first_of("=+-@\t\r") != 0 || isSize(field), "no field is a formula");
            const bool isLast = column + 1 == columns;
            require(isLast ? text.empty() || text.starts_with('\n') || text.starts_with("\r\n")
                           : text.starts_with(','),
                    "every row has all its fields and no more");
            text.remove_prefix(text.empty() ? 0 : text.find_first_of(",\n") + 1);
        }
    }
    require(text.empty(), "the table ends with its last row");
}

void requireSoundXml(std::string_view document, std::size_t rows) {
    pugi::xml_document parsed;
    requireXml(document, "a report is an XML document", parsed);
    std::size_t paths = 0;
    for (pugi::xml_node node = parsed.child("root"); node;) {
        paths += std::strcmp(node.name(), "path") == 0 ? 1 : 0;
        pugi::xml_node next = node.first_child();
        while (!next && node) {
            next = node.next_sibling();
            node = node.parent();
        }
        node = next;
    }
    require(paths == rows, "every row has its element");
}

void requireSoundWorkbook(std::string_view archive) {
    for (const char* part : {"xl/worksheets/sheet1.xml", "xl/workbook.xml", "docProps/core.xml"}) {
        pugi::xml_document parsed;
        const std::string content = zipPart(archive, part);
        requireXml(content, "a workbook's part is an XML document", parsed);
        require(content.find("<f>") == std::string::npos, "a workbook has no formulas");
    }
}

#include "export/xmlText.h"

#include <algorithm>
#include <utility>

#include "platform/text.h"

namespace modExport {

namespace {

constexpr char32_t movedCharacters = 0xF000;
constexpr char32_t movedBytes = 0xEF00;

constexpr bool isControl(char32_t c) {
    return c < 0x20 || c == 0x7F;
}

constexpr bool standsForAnother(char32_t c) {
    return (c >= movedCharacters && isControl(c - movedCharacters)) ||
           (c >= movedBytes + 0x80 && c <= movedBytes + 0xFF);
}

constexpr bool isNonCharacter(char32_t c) {
    return (c & 0xFFFE) == 0xFFFE || (c >= 0xFDD0 && c <= 0xFDEF);
}

bool holds(Document document, char32_t c) {
    const bool isSpace = c == '\t' || c == '\n';
    if (c == platform::invalidCodePoint || standsForAnother(c)) {
        return false;
    }
    if (document == Document::html5) {
        return !isNonCharacter(c) && (isSpace || !(isControl(c) || (c >= 0x80 && c <= 0x9F)));
    }
    return c != 0xFFFE && c != 0xFFFF &&
           (document == Document::workbook || c >= 0x20 || isSpace || c == '\r');
}

bool isPlain(char byte) {
    return byte >= 0x20 && byte <= 0x7E;
}

} // namespace

void moveForbiddenCharacters(std::string& text, Document document) {
    if (std::all_of(text.begin(), text.end(), isPlain)) {
        return;
    }
    std::string result;
    result.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t start = position;
        const char32_t character = platform::decodeCodePoint(text, position);
        const std::string_view bytes = std::string_view(text).substr(start, position - start);
        if (holds(document, character)) {
            result.append(bytes);
        } else if (isControl(character)) {
            platform::appendCodePoint(result, movedCharacters + character);
        } else {
            for (const char byte : bytes) {
                platform::appendCodePoint(result, movedBytes + static_cast<unsigned char>(byte));
            }
        }
    }
    text = std::move(result);
}

void appendXmlEscaped(std::string& result, std::string_view text) {
    for (const char c : text) {
        switch (c) {
        case '&':
            result.append("&amp;");
            break;
        case '<':
            result.append("&lt;");
            break;
        case '>':
            result.append("&gt;");
            break;
        case '\r':
            result.append("&#13;");
            break;
        default:
            result.push_back(c);
        }
    }
}

void appendHtmlEscaped(std::string& result, std::string text) {
    moveForbiddenCharacters(text, Document::html5);
    appendHtmlEntities(result, text);
}

void appendHtmlEntities(std::string& result, std::string_view text) {
    for (const char c : text) {
        switch (c) {
        case '&':
            result.append("&amp;");
            break;
        case '<':
            result.append("&lt;");
            break;
        case '>':
            result.append("&gt;");
            break;
        case '"':
            result.append("&quot;");
            break;
        case '\t':
            result.append("&#9;");
            break;
        case '\n':
            result.append("&#10;");
            break;
        default:
            result.push_back(c);
        }
    }
}

} // namespace modExport

#include "export/xmlText.h"

#include <algorithm>
#include <utility>

#include "platform/text.h"

namespace modExport {

namespace {

constexpr char32_t replacement = 0xFFFD;

bool isForbidden(char32_t character) {
    return (character < 0x20 && character != '\t' && character != '\n' && character != '\r') ||
           character == 0xFFFE || character == 0xFFFF || character == platform::invalidCodePoint;
}

bool isPlain(char byte) {
    return byte >= 0x20 && byte <= 0x7E;
}

} // namespace

void replaceForbiddenCharacters(std::string& text) {
    if (std::all_of(text.begin(), text.end(), isPlain)) {
        return;
    }
    std::string result;
    result.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t start = position;
        const char32_t character = platform::decodeCodePoint(text, position);
        if (isForbidden(character)) {
            platform::appendCodePoint(result, replacement);
        } else {
            result.append(text, start, position - start);
        }
    }
    text = std::move(result);
}

} // namespace modExport

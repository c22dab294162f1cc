#include "app/console/terminalText.h"

#include "platform/text.h"

std::string forTerminal(std::string_view text, char replacement) {
    std::string result;
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t start = position;
        const char32_t c = platform::decodeCodePoint(text, position);
        const bool control = c < 0x20 || (c >= 0x7F && c <= 0x9F) || c == platform::invalidCodePoint;
        if (control) {
            result += replacement;
        } else {
            result.append(text.substr(start, position - start));
        }
    }
    return result;
}

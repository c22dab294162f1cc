
#include <algorithm>

#include "platform/paths.h"
#include "platform/text.h"

namespace {

constexpr bool isOctal(char c) {
    return c >= '0' && c <= '7';
}

void appendOctal(std::string& result, char byte) {
    const unsigned code = static_cast<unsigned char>(byte);
    result.push_back('\\');
    for (const unsigned digit : {code / 64, code / 8 % 8, code % 8}) {
        result.push_back(static_cast<char>('0' + digit));
    }
}

// What changes the direction in which a terminal shows the text that follows, or breaks a line.
constexpr bool turnsText(char32_t c) {
    return c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x2028 && c <= 0x202E) ||
           (c >= 0x2066 && c <= 0x2069);
}

bool looksLikeCode(std::string_view text) {
    constexpr std::size_t digits = 3;
    return text.size() > digits && text[0] == '\\' &&
           std::all_of(text.begin() + 1, text.begin() + 1 + digits, isOctal);
}

} // namespace

std::string forTerminal(std::string_view text) {
    std::string result;
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t start = position;
        const char32_t c = platform::decodeCodePoint(text, position);
        const std::string_view bytes = text.substr(start, position - start);
        const bool control =
            c < 0x20 || (c >= 0x7F && c <= 0x9F) || c == platform::invalidCodePoint || turnsText(c);
        if (control || (platform::displaySeparator != '\\' && looksLikeCode(text.substr(start)))) {
            for (const char byte : bytes) {
                appendOctal(result, byte);
            }
        } else {
            result.append(bytes);
        }
    }
    return result;
}

std::string linesForTerminal(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        result += forTerminal(line);
        text.remove_prefix(line.size());
        if (!text.empty()) {
            result += '\n';
            text.remove_prefix(1);
        }
    }
    return result;
}

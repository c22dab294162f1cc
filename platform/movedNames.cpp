#include "platform/movedNames.h"

#include <algorithm>
#include <array>

#include "platform/text.h"

namespace platform {

namespace {

constexpr std::array<bool, 256> plainBytes = [] {
    std::array<bool, 256> plain{};
    for (std::size_t byte = 0x20; byte < 0x7F; ++byte) {
        plain[byte] = true;
    }
    for (const char special : {'\\', '"', '|', '*', '?', '<', '>'}) {
        plain[static_cast<unsigned char>(special)] = false;
    }
    return plain;
}();

} // namespace

bool isUnmovedName(std::string_view name) noexcept {
    return std::all_of(name.begin(), name.end(),
                       [](char c) { return plainBytes[static_cast<unsigned char>(c)]; });
}

void appendMovedName(std::string& result, std::string_view nativeName) {
    if (isUnmovedName(nativeName)) {
        result.append(nativeName);
        return;
    }
    for (std::size_t position = 0; position < nativeName.size();) {
        const std::size_t start = position;
        const char32_t c = decodeCodePoint(nativeName, position);
        const std::string_view bytes = nativeName.substr(start, position - start);
        const bool illegalText = c == invalidCodePoint || c == 0xFFFE || c == 0xFFFF;
        if (illegalText || isMovedByte(c) || isMovedCharacter(c)) {
            for (const char byte : bytes) {
                appendCodePoint(result, movedBytes + static_cast<unsigned char>(byte));
            }
        } else if (c < 0x80 && !plainBytes[c]) {
            appendCodePoint(result, movedCharacters + c);
        } else {
            result.append(bytes);
        }
    }
}

void appendUnmovedName(std::string& result, std::string_view text, char separator) {
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t start = position;
        if (text[position] != '\xEE' && text[position] != '\xEF') { // no mapped character begins otherwise
            result.push_back(text[position] == '\\' ? separator : text[position]);
            ++position;
            continue;
        }
        const char32_t c = decodeCodePoint(text, position);
        const char32_t code = c - movedCharacters;
        if (c >= movedBytes + 0x80 && isMovedByte(c)) {
            result.push_back(static_cast<char>(c - movedBytes));
        } else if (c > movedCharacters && code < 0x80 && !plainBytes[code]) {
            result.push_back(static_cast<char>(code));
        } else {
            result.append(text.substr(start, position - start));
        }
    }
}

} // namespace platform

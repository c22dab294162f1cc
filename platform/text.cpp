#include "platform/text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace platform {

namespace {

constexpr bool isContinuation(char c) noexcept {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// Looks at eight bytes at a time.
bool isAscii(std::string_view text) {
    constexpr std::uint64_t highBits = 0x8080808080808080;
    std::uint64_t seen = 0;
    for (; text.size() >= sizeof seen; text.remove_prefix(sizeof seen)) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, text.data(), sizeof eight);
        seen |= eight & highBits;
    }
    return seen == 0 && std::none_of(text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; });
}

} // namespace

char32_t decodeCodePoint(std::string_view text, std::size_t& position) {
    const auto lead = static_cast<unsigned char>(text[position++]);
    if (lead < 0x80) {
        return lead;
    }
    std::size_t length = 0;
    char32_t codePoint = 0;
    char32_t smallest = 0;
    if ((lead & 0xE0) == 0xC0) {
        length = 1, codePoint = lead & 0x1F, smallest = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 2, codePoint = lead & 0x0F, smallest = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 3, codePoint = lead & 0x07, smallest = 0x10000;
    } else {
        return invalidCodePoint;
    }
    if (text.size() - position < length) {
        return invalidCodePoint;
    }
    for (std::size_t i = 0; i < length; ++i) {
        const char next = text[position + i];
        if (!isContinuation(next)) {
            return invalidCodePoint;
        }
        codePoint = (codePoint << 6) | (static_cast<unsigned char>(next) & 0x3F);
    }
    const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    if (codePoint < smallest || codePoint > 0x10FFFF || surrogate) {
        return invalidCodePoint;
    }
    position += length;
    return codePoint;
}

char32_t loneSurrogateAt(std::string_view text, std::size_t position) {
    if (text.size() - position < 3 || text[position] != '\xED') {
        return 0;
    }
    const auto middle = static_cast<unsigned char>(text[position + 1]);
    const auto last = static_cast<unsigned char>(text[position + 2]);
    const bool isSurrogate = middle >= 0xA0 && middle <= 0xBF && isContinuation(text[position + 2]);
    return isSurrogate ? 0xD000U | (middle & 0x3FU) << 6 | (last & 0x3FU) : 0;
}

void appendCodePoint(std::string& text, char32_t codePoint) {
    const auto put = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (codePoint < 0x80) {
        put(codePoint);
    } else if (codePoint < 0x800) {
        put(0xC0 | (codePoint >> 6));
        put(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        put(0xE0 | (codePoint >> 12));
        put(0x80 | ((codePoint >> 6) & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    } else {
        put(0xF0 | (codePoint >> 18));
        put(0x80 | ((codePoint >> 12) & 0x3F));
        put(0x80 | ((codePoint >> 6) & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    }
}

std::size_t characterCount(std::string_view text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return !isContinuation(c); }));
}

std::string_view firstCharacters(std::string_view text, std::size_t count) {
    if (text.size() <= count) {
        return text;
    }
    if (isAscii(text.substr(0, count)) && !isContinuation(text[count])) {
        return text.substr(0, count);
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!isContinuation(text[i]) && count-- == 0) {
            return text.substr(0, i);
        }
    }
    return text;
}

char asciiLower(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool equalIgnoringAsciiCase(std::string_view left, std::string_view right) noexcept {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return asciiLower(a) == asciiLower(b); });
}

std::string_view trimmed(std::string_view text) noexcept {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

} // namespace platform

#include <functional>

#include "platform/locale.h"
#include "platform/text.h"

namespace platform {

namespace {

// Reads the character at the position and returns it in lower case; an invalid byte stands for itself, after
// all characters.
char32_t nextLowered(std::string_view text, std::size_t& position) {
    const auto byte = static_cast<unsigned char>(text[position]);
    if (byte < 0x80) {
        return static_cast<unsigned char>(asciiLower(text[position++]));
    }
    const char32_t letter = decodeCodePoint(text, position);
    return letter == invalidCodePoint ? 0x110000U + byte : lowerCaseLetter(letter);
}

} // namespace

void appendLowerCase(std::string& result, std::string_view text) {
    for (std::size_t position = 0; position < text.size();) {
        const char c = text[position];
        if (static_cast<unsigned char>(c) < 0x80) {
            result.push_back(asciiLower(c));
            ++position;
            continue;
        }
        const std::size_t start = position;
        const char32_t letter = decodeCodePoint(text, position);
        if (letter == invalidCodePoint) {
            result.append(text.substr(start, position - start));
        } else {
            appendCodePoint(result, lowerCaseLetter(letter));
        }
    }
}

std::string lowerCase(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    appendLowerCase(result, text);
    return result;
}

int compareIgnoringCase(std::string_view left, std::string_view right) {
    std::size_t inLeft = 0;
    std::size_t inRight = 0;
    while (inLeft < left.size() && inRight < right.size()) {
        const char32_t one = nextLowered(left, inLeft);
        const char32_t other = nextLowered(right, inRight);
        if (one != other) {
            return one < other ? -1 : 1;
        }
    }
    return static_cast<int>(inLeft < left.size()) - static_cast<int>(inRight < right.size());
}

int compareNames(std::string_view left, std::string_view right) {
    return namesIgnoreCase() ? compareIgnoringCase(left, right) : left.compare(right);
}

bool sameName(std::string_view left, std::string_view right) {
    return namesIgnoreCase() ? compareIgnoringCase(left, right) == 0 : left == right;
}

std::size_t NameHash::operator()(std::string_view name) const {
    return namesIgnoreCase() ? std::hash<std::string>()(lowerCase(name))
                             : std::hash<std::string_view>()(name);
}

} // namespace platform

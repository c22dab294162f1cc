#include "db/jetLike.h"

#include <cstddef>

#include "platform/locale.h"
#include "platform/text.h"

namespace {

using platform::decodeCodePoint;

char32_t asItIs(char32_t letter) {
    return letter;
}

// A position in a text or pattern; letters are converted as they are read.
template <char32_t (*letterOf)(char32_t)>
struct Cursor {
    std::string_view text;
    std::size_t position = 0;

    [[nodiscard]] bool atEnd() const { return position >= text.size(); }
    char32_t next() { return letterOf(decodeCodePoint(text, position)); }
};

// Matches one character against the class whose "[" has been read; moves `pattern` past the "]".
template <class Cursor>
bool matchesClass(char32_t c, Cursor& pattern) {
    const bool negated = !pattern.atEnd() && pattern.text[pattern.position] == '!';
    pattern.position += negated ? 1 : 0;
    bool found = false;
    while (pattern.text[pattern.position] != ']') {
        const char32_t first = pattern.next();
        char32_t last = first;
        const bool range = pattern.text[pattern.position] == '-' && pattern.text[pattern.position + 1] != ']';
        if (range) {
            ++pattern.position;
            last = pattern.next();
        }
        found = found || (c >= first && c <= last);
    }
    ++pattern.position;
    return found != negated;
}

// Matches one character against the pattern's next element, which is not a "*".
template <class Cursor>
bool matchesElement(char32_t c, Cursor& pattern) {
    const char32_t element = pattern.next();
    switch (element) {
    case '?':
        return true;
    case '#':
        return c >= '0' && c <= '9';
    case '[':
        if (pattern.text.find(']', pattern.position) != std::string_view::npos) {
            return matchesClass(c, pattern);
        }
        break;
    default:
        break;
    }
    return c == element;
}

template <char32_t (*letterOf)(char32_t)>
bool matches(std::string_view text, std::string_view pattern) {
    Cursor<letterOf> in{text};
    Cursor<letterOf> by{pattern};
    // Where to continue after the last "*" if the attempt fails: the "*" then takes one more character.
    std::size_t retryPattern = std::string_view::npos;
    std::size_t retryText = 0;
    for (;;) {
        if (!by.atEnd() && by.text[by.position] == '*') {
            if (++by.position == pattern.size()) {
                return true;
            }
            retryPattern = by.position;
            retryText = in.position;
            continue;
        }
        if (in.atEnd() && by.atEnd()) {
            return true;
        }
        if (!in.atEnd() && !by.atEnd() && matchesElement(in.next(), by)) {
            continue;
        }
        if (retryPattern == std::string_view::npos || retryText >= text.size()) {
            return false;
        }
        in.position = retryText;
        in.next();
        retryText = in.position;
        by.position = retryPattern;
    }
}

} // namespace

bool jetLike(std::string_view text, std::string_view pattern) {
    return matches<asItIs>(text, pattern);
}

bool jetLikeIgnoringCase(std::string_view text, std::string_view pattern) {
    return matches<platform::lowerCaseLetter>(text, pattern);
}

std::string jetLiteral(std::string_view text) {
    std::string pattern;
    for (const char c : text) {
        const bool isSpecial = std::string_view("*?#[").find(c) != std::string_view::npos;
        isSpecial ? pattern.append("[").append(1, c).append("]") : pattern.append(1, c);
    }
    return pattern;
}

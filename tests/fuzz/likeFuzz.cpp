// A pattern, NUL, a text: the answers of `Like` are those of a slower matcher that follows its description.

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "db/jetLike.h"
#include "fuzz/support/input.h"
#include "fuzz/support/require.h"

namespace {

struct Element {
    enum class Kind { any, one, digit, letter, set };
    Kind kind = Kind::letter;
    char32_t letter = 0;
    bool negated = false;
    std::vector<std::pair<char32_t, char32_t>> ranges = {};

    [[nodiscard]] bool takes(char32_t c) const {
        bool found = false;
        for (const auto& [first, last] : ranges) {
            found = found || (first <= c && c <= last);
        }
        return kind == Kind::one || (kind == Kind::digit && c >= '0' && c <= '9') ||
               (kind == Kind::letter && c == letter) || (kind == Kind::set && found != negated);
    }
};

std::u32string lettersOf(std::string_view text) {
    std::u32string letters;
    for (std::size_t position = 0; position < text.size();) {
        letters.push_back(platform::decodeCodePoint(text, position));
    }
    return letters;
}

Element setOf(std::u32string_view inside) {
    Element set{Element::Kind::set};
    set.negated = inside.starts_with(U'!');
    for (std::size_t i = set.negated ? 1 : 0; i < inside.size(); ++i) {
        const bool range = i + 2 < inside.size() && inside[i + 1] == U'-';
        set.ranges.emplace_back(inside[i], inside[range ? i + 2 : i]);
        i += range ? 2 : 0;
    }
    return set;
}

std::vector<Element> elementsOf(const std::u32string& pattern) {
    using Kind = Element::Kind;
    std::vector<Element> elements;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const std::size_t close = pattern[i] == U'[' ? pattern.find(U']', i) : std::u32string::npos;
        if (close != std::u32string::npos) {
            elements.push_back(setOf(std::u32string_view(pattern).substr(i + 1, close - i - 1)));
            i = close;
        } else {
            const char32_t c = pattern[i];
            elements.push_back({c == U'*'   ? Kind::any
                                : c == U'?' ? Kind::one
                                : c == U'#' ? Kind::digit
                                            : Kind::letter,
                                c});
        }
    }
    return elements;
}

// Keeps, for each letter of the text, which beginnings of the pattern match up to there.
bool matches(const std::u32string& text, const std::vector<Element>& elements) {
    std::vector<bool> reached(elements.size() + 1);
    reached[0] = true;
    const auto passStars = [&] {
        for (std::size_t i = 0; i < elements.size(); ++i) {
            reached[i + 1] = reached[i + 1] || (reached[i] && elements[i].kind == Element::Kind::any);
        }
    };
    passStars();
    for (const char32_t c : text) {
        std::vector<bool> next(elements.size() + 1);
        for (std::size_t i = 0; i < elements.size(); ++i) {
            const bool isAny = elements[i].kind == Element::Kind::any;
            next[isAny ? i : i + 1] =
                next[isAny ? i : i + 1] || (reached[i] && (isAny || elements[i].takes(c)));
        }
        reached = std::move(next);
        passStars();
    }
    return reached.back();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::string_view pattern = input.upTo('\0');
    const std::string_view text = input.rest();
    require(jetLike(text, pattern) == matches(lettersOf(text), elementsOf(lettersOf(pattern))),
            "the same answer as by the description");
    static_cast<void>(jetLikeIgnoringCase(text, pattern));

    require(jetLike(text, jetLiteral(text)), "a text matches its own literal");
    require(jetLikeIgnoringCase(text, jetLiteral(text)), "also if case is ignored");
    if (isUtf8(text) && isUtf8(pattern)) {
        require(jetLike(text, jetLiteral(pattern)) == (text == pattern), "a literal matches nothing else");
    }
    return 0;
}

#include "base/excludePattern.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "platform/locale.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace {

constexpr char32_t invalidBytes = 0x110000; // behind all characters

// A byte that begins no character stands for itself.
char32_t nextCharacter(std::string_view text, std::size_t& position) {
    const auto byte = static_cast<unsigned char>(text[position]);
    const char32_t character = platform::decodeCodePoint(text, position);
    return character == platform::invalidCodePoint ? invalidBytes + byte : character;
}

struct Class {
    std::string_view name;
    std::string_view ranges; // pairs of a first and a last character
};

// Of ASCII only, so that a pattern means the same everywhere.
constexpr std::array<Class, 12> classes{{{"alnum", "09AZaz"},
                                         {"alpha", "AZaz"},
                                         {"blank", "\t\t  "},
                                         {"cntrl", {"\x01\x1F\x7F\x7F", 4}},
                                         {"digit", "09"},
                                         {"graph", "!~"},
                                         {"lower", "az"},
                                         {"print", " ~"},
                                         {"punct", "!/:@[`{~"},
                                         {"space", "\t\r  "},
                                         {"upper", "AZ"},
                                         {"xdigit", "09AFaf"}}};

// The class at the position, which is behind its "[:"; the position moves behind its ":]".
const Class* classAt(std::string_view pattern, std::size_t& position) {
    const std::size_t end = pattern.find(":]", position);
    const auto* const found = std::find_if(classes.begin(), classes.end(), [&](const Class& each) {
        return end != std::string_view::npos && each.name == pattern.substr(position, end - position);
    });
    if (found == classes.end()) {
        return nullptr;
    }
    position = end + 2;
    return found;
}

} // namespace

ExcludePattern::Rules ExcludePattern::systemRules() {
    return {platform::namesIgnoreCase(), platform::displaySeparator == '\\'};
}

void ExcludePattern::makeComparable(std::string& path, Rules rules) {
    if (rules.backslashSeparates) {
        std::replace(path.begin(), path.end(), '\\', '/');
    }
    if (rules.ignoresCase) {
        path = platform::lowerCase(path);
    }
}

ExcludePattern::ExcludePattern(std::string_view text, Rules rules) {
    std::string pattern(text);
    makeComparable(pattern, rules);
    const bool takesEscapes = !rules.backslashSeparates;
    for (std::size_t position = 0; position < pattern.size();) {
        const char c = pattern[position];
        if (c == '*') {
            if (parts_.empty() || parts_.back().kind != Part::Kind::any) {
                parts_.push_back({.kind = Part::Kind::any});
            }
            ++position;
        } else if (c == '?') {
            parts_.push_back({.kind = Part::Kind::one});
            ++position;
        } else if (c != '[' || !addSet(pattern, position, takesEscapes)) {
            hasOpenSet_ = hasOpenSet_ || c == '[';
            const bool isEscape = takesEscapes && c == '\\' && position + 1 < pattern.size();
            position += isEscape ? 1 : 0;
            addText(std::string_view(pattern).substr(position, 1));
            ++position;
        }
    }
}

void ExcludePattern::addText(std::string_view text) {
    if (parts_.empty() || parts_.back().kind != Part::Kind::text) {
        parts_.push_back({});
    }
    parts_.back().text.append(text);
}

// False, and the position stays, if there is no "]" that ends it; then "[" is a character like others.
bool ExcludePattern::addSet(std::string_view pattern, std::size_t& position, bool takesEscapes) {
    std::size_t next = position + 1;
    Part set{.kind = Part::Kind::set};
    if (next < pattern.size() && (pattern[next] == '!' || pattern[next] == '^')) {
        set.isNegated = true;
        ++next;
    }
    const auto character = [&]() -> std::optional<char32_t> {
        next += takesEscapes && next < pattern.size() && pattern[next] == '\\' ? 1 : 0;
        return next < pattern.size() ? std::optional(nextCharacter(pattern, next)) : std::nullopt;
    };
    for (bool isFirst = true; next < pattern.size() && (isFirst || pattern[next] != ']'); isFirst = false) {
        if (pattern.substr(next).starts_with("[:")) {
            std::size_t behind = next + 2;
            if (const Class* const named = classAt(pattern, behind)) {
                for (std::size_t i = 0; i < named->ranges.size(); i += 2) {
                    set.ranges.push_back({static_cast<unsigned char>(named->ranges[i]),
                                          static_cast<unsigned char>(named->ranges[i + 1])});
                }
                next = behind;
                continue;
            }
        }
        const std::optional<char32_t> first = character();
        std::optional<char32_t> last = first;
        if (next + 1 < pattern.size() && pattern[next] == '-' && pattern[next + 1] != ']') {
            ++next;
            last = character();
        }
        if (!first || !last) {
            return false;
        }
        set.ranges.push_back({*first, *last});
    }
    if (next >= pattern.size()) {
        return false;
    }
    position = next + 1;
    const bool isOneCharacter = set.ranges.size() == 1 && !set.isNegated &&
                                set.ranges.front().first == set.ranges.front().last &&
                                set.ranges.front().first < invalidBytes;
    if (isOneCharacter) {
        std::string text;
        platform::appendCodePoint(text, set.ranges.front().first);
        addText(text);
    } else {
        parts_.push_back(std::move(set));
    }
    return true;
}

bool ExcludePattern::fits(std::string_view path) const {
    if (parts_.empty()) {
        return false;
    }
    const Part& last = parts_.back();
    if (last.kind == Part::Kind::text && !path.ends_with(last.text)) {
        return false;
    }
    if (parts_.size() == 1 && last.kind == Part::Kind::text) {
        const std::size_t before = path.size() - last.text.size();
        return before == 0 || path[before - 1] == '/';
    }
    if (parts_.front().kind == Part::Kind::any) { // which takes what is before a "/", too
        return (parts_.size() == 2 && last.kind == Part::Kind::text) || describes(path);
    }
    for (std::size_t start = 0; start < path.size();) {
        if (describes(path.substr(start))) {
            return true;
        }
        const std::size_t slash = path.find('/', start);
        start = slash == std::string_view::npos ? path.size() : slash + 1;
    }
    return false;
}

// Only the last "*" that was met ever has to take more.
bool ExcludePattern::describes(std::string_view text) const {
    std::size_t part = 0;
    std::size_t position = 0;
    std::size_t partBehindAny = 0; // 0 for none
    std::size_t taken = 0;         // by that "*", up to here
    while (part < parts_.size() || position < text.size()) {
        if (part < parts_.size() && parts_[part].kind == Part::Kind::any) {
            partBehindAny = ++part;
            taken = position;
            if (part == parts_.size()) {
                return true;
            }
        } else if (part < parts_.size() && consume(parts_[part], text, position)) {
            ++part;
        } else if (partBehindAny > 0 && taken < text.size()) {
            static_cast<void>(nextCharacter(text, taken));
            position = taken;
            part = partBehindAny;
        } else {
            return false;
        }
    }
    return true;
}

// Whether the text goes on with the part; if so, the position moves behind it.
bool ExcludePattern::consume(const Part& part, std::string_view text, std::size_t& position) {
    if (part.kind == Part::Kind::text) {
        const bool isThere = text.substr(position).starts_with(part.text);
        position += isThere ? part.text.size() : 0;
        return isThere;
    }
    if (position == text.size()) {
        return false;
    }
    std::size_t behind = position;
    const char32_t c = nextCharacter(text, behind);
    const bool isListed = std::any_of(part.ranges.begin(), part.ranges.end(), [c](const Range& range) {
        return c >= range.first && c <= range.last;
    });
    if (part.kind == Part::Kind::set && isListed == part.isNegated) {
        return false;
    }
    position = behind;
    return true;
}

#pragma once

#include <string>
#include <string_view>
#include <vector>

// One pattern of what shall not be counted, compiled. `*` stands for any characters, also "/", `?` for one,
// `[a-z]` for one of these and `[!a-z]` (or `[^a-z]`) for one of all others; "\" takes the next character as
// it stands. A path fits if the pattern describes all of it, or all that is behind one of its "/".
class ExcludePattern {
public:
    struct Rules {
        bool ignoresCase;
        bool backslashSeparates; // so it takes nothing as it stands; "[[]" still is a "["
    };
    [[nodiscard]] static Rules systemRules();

    explicit ExcludePattern(std::string_view text, Rules rules = systemRules());

    // Whether it has a "[" without its "]", which stands for itself.
    [[nodiscard]] bool hasOpenSet() const noexcept { return hasOpenSet_; }

    // A path as the system writes it, in the form in which it is compared.
    static void makeComparable(std::string& path, Rules rules);

    // The path has that form. May be called by several threads at once.
    [[nodiscard]] bool fits(std::string_view path) const;

private:
    struct Range {
        char32_t first;
        char32_t last;
    };
    struct Part {
        enum class Kind { text, one, any, set };
        Kind kind = Kind::text;
        std::string text = {};
        std::vector<Range> ranges = {};
        bool isNegated = false;
    };

    void addText(std::string_view text);
    [[nodiscard]] bool addSet(std::string_view pattern, std::size_t& position, bool takesEscapes);
    [[nodiscard]] bool describes(std::string_view text) const;
    [[nodiscard]] static bool consume(const Part& part, std::string_view text, std::size_t& position);

    std::vector<Part> parts_;
    bool hasOpenSet_ = false;
};

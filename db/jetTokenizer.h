#pragma once

#include <cstddef>
#include <string_view>

// A word of a statement in the Jet dialect.
struct JetToken {
    enum class Kind { name, bracketedName, text, number, symbol, end };

    Kind kind = Kind::end;
    // A name without its brackets, a text without its quotes (with quotes inside still doubled), a number or
    // a symbol (including those like "<="). A view into the statement.
    std::string_view value;
    char quote = '\0'; // the quote around a text

    [[nodiscard]] bool is(std::string_view word) const; // a plain name, ignoring case, or a symbol
};

// Splits a statement into tokens, one at a time. Throws RuntimeError 3075 for a quote or bracket that is not
// closed, and for a character that cannot start a token.
class JetTokenizer {
public:
    explicit JetTokenizer(std::string_view statement) : statement_(statement) { advance(); }

    [[nodiscard]] const JetToken& current() const noexcept { return current_; }
    // The token after the current one.
    [[nodiscard]] JetToken following() const;
    void advance();

private:
    [[nodiscard]] JetToken read(std::size_t& position) const;

    std::string_view statement_;
    std::size_t position_ = 0;
    JetToken current_;
};

#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "db/jetTokenizer.h"

// Translates statements of the Jet dialect, with values included in the text, to SQLite's. These are the
// differences: "text" and 'text' with doubled quotes inside, [name], `delete * from`, `&` (which treats NULL
// as an empty text), Left(text, count), Like with * ? # [a-z] [!a-z] (a function of the connection, see
// db/jetLike.h). Each literal becomes a bound parameter, so statements that differ only in their values have
// the same *shape*; the flags 0 and 1 stay in the text, because the engine then finds better plans.
//
// Nothing else of the engine's language gets through: no other words of it, and no functions but Left, Count,
// Sum, Min and Max. Operands are nested 100 deep at most.
class JetTranslator {
public:
    using Literal = std::variant<std::string_view, double>;

    // `textCollation`: the collation for every comparison with a text; empty for the engine's default.
    explicit JetTranslator(std::string_view textCollation = {})
        : collate_(textCollation.empty() ? std::string() : " collate " + std::string(textCollation)) {}

    // Translates the next statement. Throws RuntimeError 3075 if it is not valid. The results below are valid
    // until the next call, and only while the statement's text lives.
    void translate(std::string_view statement);

    // SQLite's text, with ?1, ?2, … for the literals.
    [[nodiscard]] const std::string& shape() const noexcept { return shape_; }
    [[nodiscard]] const std::vector<Literal>& literals() const noexcept { return literals_; }

    // The shape's length before its final ORDER BY.
    [[nodiscard]] std::size_t lengthWithoutOrder() const noexcept { return lengthWithoutOrder_; }

private:
    class Nesting;

    void copyStatement(JetTokenizer& tokens);
    void copyUntilClosed(JetTokenizer& tokens, bool nested);
    void copyExpression(JetTokenizer& tokens);
    void copySum(JetTokenizer& tokens);
    void copyOperand(JetTokenizer& tokens);
    void copyName(JetTokenizer& tokens);
    void copyIdentifier(JetTokenizer& tokens);
    void copyInParentheses(JetTokenizer& tokens);
    void copyWord(JetTokenizer& tokens);
    void appendLiteral(const JetToken& token);

    std::string collate_; // after each text; joined columns have no collation of their own
    std::string shape_;
    std::vector<Literal> literals_;
    std::deque<std::string> unquoted_; // texts whose doubled quotes were undone
    std::size_t lengthWithoutOrder_ = 0;
    int depth_ = 0; // of the operand being copied
};

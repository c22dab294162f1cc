#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "db/jetTokenizer.h"

// Translates statements of the Jet dialect, as the program writes them with values concatenated in, into
// SQLite's. What differs:
//   "text" and 'text' with doubled quotes inside, [name], `delete * from`, `&` (which takes NULL for the
//   empty text), Left(text, count), Like with * ? # [a-z] [!a-z] (a function of the connection's, see
//   db/jetLike.h), `insert into T in 'file' select …`.
// Each literal becomes a bound parameter, so statements that differ in values only have one *shape*; only the
// flags 0 and 1 stay, for the engine plans better when it sees them.
class JetTranslator {
public:
    using Literal = std::variant<std::string_view, double>;

    // `textCollation`: the collation that every comparison with a text is to use; empty for the engine's own.
    explicit JetTranslator(std::string_view textCollation = {})
        : collate_(textCollation.empty() ? std::string() : " collate " + std::string(textCollation)) {}

    // Takes the next statement. Throws RuntimeError 3075 for what is none. The results below are valid until
    // the next call and only while the statement's text lives.
    void translate(std::string_view statement);

    // SQLite's text, with ?1, ?2, … for the literals.
    [[nodiscard]] const std::string& shape() const noexcept { return shape_; }
    [[nodiscard]] const std::vector<Literal>& literals() const noexcept { return literals_; }

    // The shape's length before its final ORDER BY.
    [[nodiscard]] std::size_t lengthWithoutOrder() const noexcept { return lengthWithoutOrder_; }

    // Of `insert into T in 'file' select …`: the file and the table; the shape is then the SELECT alone.
    [[nodiscard]] std::string_view targetFile() const noexcept { return targetFile_; }
    [[nodiscard]] std::string_view targetTable() const noexcept { return targetTable_; }

private:
    void copyStatement(JetTokenizer& tokens);
    void copyUntilClosed(JetTokenizer& tokens, bool nested);
    void copyExpression(JetTokenizer& tokens);
    bool copyConcatenation(JetTokenizer& tokens);
    void copySum(JetTokenizer& tokens);
    void copyOperand(JetTokenizer& tokens);
    void copyName(JetTokenizer& tokens);
    void copyWord(JetTokenizer& tokens);
    void readInsertTarget(JetTokenizer& tokens);
    void copyFolderComparison(JetTokenizer& tokens, std::size_t start);
    void appendLiteral(const JetToken& token);

    std::string collate_; // behind each text; joined columns have none of their own
    std::string shape_;
    std::vector<Literal> literals_;
    std::deque<std::string> unquoted_; // texts whose doubled quotes had to be undone
    std::size_t lengthWithoutOrder_ = 0;
    std::string targetFile_;
    std::string targetTable_;
    bool inCondition_ = false;
};

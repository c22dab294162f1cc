#include "db/jetTranslator.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <span>

#include "db/dao.h"
#include "db/values.h"
#include "platform/runtimeError.h"
#include "platform/text.h"

namespace {

constexpr std::array<std::string_view, 25> keywords{
    "select", "distinct", "from",   "where", "and", "or",   "not",    "in",   "is",
    "as",     "order",    "group",  "by",    "asc", "desc", "insert", "into", "values",
    "update", "set",      "delete", "like",  "on",  "join", "left"};
constexpr std::array<std::string_view, 4> functions{"count", "sum", "min", "max"};
constexpr int deepest = 100;

bool isOneOf(std::span<const std::string_view> words, const JetToken& token) {
    return token.kind == JetToken::Kind::name &&
           std::any_of(words.begin(), words.end(), [&](std::string_view word) {
               return platform::equalIgnoringAsciiCase(token.value, word);
           });
}

bool isKeyword(const JetToken& token) {
    return isOneOf(keywords, token);
}

// A word with a meaning of its own to the engine, which as a name would let its statements in.
bool isForeignKeyword(const JetToken& token) {
    return token.kind == JetToken::Kind::name && !token.is("null") &&
           sqlite3_keyword_check(token.value.data(), static_cast<int>(token.value.size())) != 0;
}

bool isArithmetic(const JetToken& token) {
    return token.kind == JetToken::Kind::symbol && token.value.size() == 1 &&
           std::string_view("+-*/").find(token.value[0]) != std::string_view::npos;
}

[[noreturn]] void fail(const std::string& what) {
    throw RuntimeError(databaseError::syntax, "Syntax error in query expression: " + what);
}

} // namespace

// Each level takes some of the stack, here and in the engine.
class JetTranslator::Nesting {
public:
    explicit Nesting(int& depth) : depth_(++depth) {
        if (depth > deepest) {
            fail("too complex");
        }
    }
    ~Nesting() { --depth_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

private:
    int& depth_;
};

void JetTranslator::translate(std::string_view statement) {
    shape_.clear();
    literals_.clear();
    unquoted_.clear();
    lengthWithoutOrder_ = std::string::npos;
    depth_ = 0;

    JetTokenizer tokens(statement);
    copyStatement(tokens);
    lengthWithoutOrder_ = std::min(lengthWithoutOrder_, shape_.size());
}

void JetTranslator::copyStatement(JetTokenizer& tokens) {
    const JetToken& first = tokens.current();
    if (first.is("delete")) {
        copyWord(tokens);
        if (tokens.current().is("*")) {
            tokens.advance();
        }
    } else if (!first.is("insert") && !first.is("select") && !first.is("update")) {
        throw RuntimeError(databaseError::syntax,
                           "Invalid SQL statement; expected 'DELETE', 'INSERT', 'SELECT', or 'UPDATE'.");
    }
    copyUntilClosed(tokens, false);
}

// Copies up to the end of the statement or, if nested, up to the parenthesis that closes the current one.
void JetTranslator::copyUntilClosed(JetTokenizer& tokens, bool nested) {
    for (;;) {
        const JetToken& token = tokens.current();
        if (token.kind == JetToken::Kind::end || token.is(")")) {
            if (nested != token.is(")")) {
                fail(nested ? "')' is missing" : "')' without '('");
            }
            return;
        }
        if (token.is(";")) {
            tokens.advance();
            if (nested || tokens.current().kind != JetToken::Kind::end) {
                fail("text found after the end of the statement");
            }
            return;
        }
        const bool callsLeft = token.is("left") && tokens.following().is("(");
        if (isKeyword(token) && !callsLeft) {
            if (!nested && token.is("order")) {
                lengthWithoutOrder_ = shape_.size();
            }
            const bool namesTable = token.is("into");
            copyWord(tokens);
            if (namesTable) {
                copyIdentifier(tokens); // its columns may follow in parentheses, as if it were a function
            }
        } else if (token.kind == JetToken::Kind::symbol && !token.is("(") && !isArithmetic(token)) {
            if (token.is("&") || token.is(".")) {
                fail("an operand is missing before '" + std::string(token.value) + "'");
            }
            copyWord(tokens);
        } else {
            copyExpression(tokens);
        }
    }
}

// a & b & c becomes (ifnull(a, '') || ifnull(b, '') || ifnull(c, '')), so NULL counts as an empty text.
void JetTranslator::copyExpression(JetTokenizer& tokens) {
    static constexpr std::string_view opening = " ifnull(";
    static constexpr std::string_view closing = ", '')";
    const std::size_t start = shape_.size();
    copySum(tokens);
    if (!tokens.current().is("&")) {
        return;
    }
    shape_.insert(start, opening);
    shape_.insert(start, " (");
    while (tokens.current().is("&")) {
        tokens.advance();
        shape_.append(closing).append(" ||").append(opening);
        copySum(tokens);
    }
    shape_.append(closing).append(")");
}

void JetTranslator::copySum(JetTokenizer& tokens) {
    copyOperand(tokens);
    while (isArithmetic(tokens.current())) {
        copyWord(tokens);
        copyOperand(tokens);
    }
}

void JetTranslator::copyOperand(JetTokenizer& tokens) {
    const Nesting nesting(depth_);
    const JetToken token = tokens.current();
    switch (token.kind) {
    case JetToken::Kind::text:
    case JetToken::Kind::number:
        appendLiteral(token);
        tokens.advance();
        return;
    case JetToken::Kind::name:
    case JetToken::Kind::bracketedName:
        copyName(tokens);
        return;
    default:
        break;
    }
    if (token.is("*")) {
        copyWord(tokens);
    } else if (token.is("-") || token.is("+")) {
        copyWord(tokens);
        copyOperand(tokens);
    } else if (token.is("(")) {
        copyInParentheses(tokens);
    } else {
        fail("an operand is missing");
    }
}

void JetTranslator::copyName(JetTokenizer& tokens) {
    const JetToken first = tokens.current();
    if (tokens.following().is("(")) {
        const bool isLeft = first.is("left");
        if (!isLeft && !isOneOf(functions, first)) {
            fail("undefined function '" + std::string(first.value) + "'");
        }
        shape_.append(" ").append(isLeft ? "jetLeft" : first.value);
        tokens.advance();
        copyInParentheses(tokens);
        return;
    }
    copyIdentifier(tokens);
    while (tokens.current().is(".")) {
        tokens.advance();
        shape_.append(".");
        if (tokens.current().is("*")) {
            copyWord(tokens);
            return;
        }
        copyIdentifier(tokens);
    }
}

void JetTranslator::copyIdentifier(JetTokenizer& tokens) {
    const JetToken token = tokens.current();
    if (token.kind == JetToken::Kind::bracketedName) {
        shape_.append(" ").append(modGlobal::quoted(token.value));
    } else if (token.kind == JetToken::Kind::name && !isKeyword(token) && !isForeignKeyword(token)) {
        shape_.append(" ").append(token.value);
    } else {
        fail("an operand is missing before '" + std::string(token.value) + "'");
    }
    tokens.advance();
}

void JetTranslator::copyInParentheses(JetTokenizer& tokens) {
    copyWord(tokens);
    copyUntilClosed(tokens, true);
    copyWord(tokens);
}

void JetTranslator::appendLiteral(const JetToken& token) {
    if (token.kind == JetToken::Kind::number && (token.value == "0" || token.value == "1")) {
        shape_.append(" ").append(token.value);
        return;
    }
    if (token.kind == JetToken::Kind::number) {
        double number = 0;
        const char* end = token.value.data() + token.value.size();
        if (std::from_chars(token.value.data(), end, number).ptr != end) {
            fail("'" + std::string(token.value) + "' is not a number");
        }
        literals_.emplace_back(number);
    } else if (token.value.find(token.quote) == std::string_view::npos) {
        literals_.emplace_back(token.value);
    } else {
        std::string& text = unquoted_.emplace_back();
        for (std::size_t i = 0; i < token.value.size(); ++i) {
            text.push_back(token.value[i]);
            i += token.value[i] == token.quote ? 1 : 0;
        }
        literals_.emplace_back(std::string_view(text));
    }
    shape_.append(" ?").append(std::to_string(literals_.size()));
    if (token.kind == JetToken::Kind::text) {
        shape_.append(collate_);
    }
}

void JetTranslator::copyWord(JetTokenizer& tokens) {
    shape_.append(" ").append(tokens.current().value);
    tokens.advance();
}

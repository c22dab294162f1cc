#include "db/jetTranslator.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "db/dao.h"
#include "platform/runtimeError.h"
#include "platform/text.h"

namespace {

constexpr std::array<std::string_view, 34> keywords{
    "select", "distinct", "from",  "where",  "and",    "or",      "not",   "in",     "is",
    "as",     "order",    "group", "by",     "having", "asc",     "desc",  "insert", "into",
    "values", "update",   "set",   "delete", "like",   "between", "union", "all",    "on",
    "inner",  "outer",    "join",  "left",   "right",  "exists",  "mod"};

bool isKeyword(const JetToken& token) {
    return token.kind == JetToken::Kind::name &&
           std::any_of(keywords.begin(), keywords.end(), [&](std::string_view keyword) {
               return platform::equalIgnoringAsciiCase(token.value, keyword);
           });
}

bool isArithmetic(const JetToken& token) {
    return token.kind == JetToken::Kind::symbol && token.value.size() == 1 &&
           std::string_view("+-*/").find(token.value[0]) != std::string_view::npos;
}

[[noreturn]] void fail(const std::string& what) {
    throw RuntimeError(databaseError::syntax, "Syntax error in query expression: " + what);
}

} // namespace

void JetTranslator::translate(std::string_view statement) {
    shape_.clear();
    literals_.clear();
    unquoted_.clear();
    lengthWithoutOrder_ = std::string::npos;

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
            copyWord(tokens);
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
        copyWord(tokens);
        copyUntilClosed(tokens, true);
        copyWord(tokens);
    } else {
        fail("an operand is missing");
    }
}

void JetTranslator::copyName(JetTokenizer& tokens) {
    const JetToken token = tokens.current();
    const bool callsLeft = token.is("left") && tokens.following().is("(");
    if (token.kind == JetToken::Kind::bracketedName) {
        shape_.append(" \"");
        for (const char c : token.value) {
            shape_.append(c == '"' ? 2 : 1, c);
        }
        shape_.append("\"");
    } else if (token.kind == JetToken::Kind::name && (callsLeft || !isKeyword(token))) {
        shape_.append(" ").append(callsLeft ? "jetLeft" : token.value);
    } else {
        fail("an operand is missing before '" + std::string(token.value) + "'");
    }
    tokens.advance();
    if (tokens.current().is(".")) {
        tokens.advance();
        shape_.append(".");
        if (tokens.current().is("*")) {
            copyWord(tokens);
        } else {
            copyName(tokens);
        }
    } else if (tokens.current().is("(")) {
        copyWord(tokens);
        copyUntilClosed(tokens, true);
        copyWord(tokens);
    }
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

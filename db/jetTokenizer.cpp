#include "db/jetTokenizer.h"

#include <string>

#include "db/dao.h"
#include "platform/runtimeError.h"
#include "platform/text.h"

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool startsName(char c) {
    const char lower = platform::asciiLower(c);
    return (lower >= 'a' && lower <= 'z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

[[noreturn]] void failAt(std::string_view rest) {
    throw RuntimeError(databaseError::syntax, "Syntax error in query expression at: " +
                                                  std::string(platform::firstCharacters(rest, 40)));
}

std::size_t endOfWhile(std::string_view text, std::size_t position, bool (*belongs)(char)) {
    while (position < text.size() && belongs(text[position])) {
        ++position;
    }
    return position;
}

// The position of the quote that closes a text begun before `position`; a doubled quote does not close it.
std::size_t closingQuote(std::string_view statement, std::size_t position, char quote) {
    for (;;) {
        position = statement.find(quote, position);
        if (position == std::string_view::npos || position + 1 >= statement.size() ||
            statement[position + 1] != quote) {
            return position;
        }
        position += 2;
    }
}

} // namespace

bool JetToken::is(std::string_view word) const {
    return (kind == Kind::name || kind == Kind::symbol) && platform::equalIgnoringAsciiCase(value, word);
}

JetToken JetTokenizer::following() const {
    std::size_t position = position_;
    return read(position);
}

void JetTokenizer::advance() {
    current_ = read(position_);
}

JetToken JetTokenizer::read(std::size_t& position) const {
    position = endOfWhile(statement_, position,
                          [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; });
    if (position >= statement_.size()) {
        return {};
    }
    const std::size_t start = position;
    const char first = statement_[start];
    const auto token = [&](JetToken::Kind kind, std::size_t from, std::size_t to, std::size_t next,
                           char quote = '\0') {
        position = next;
        return JetToken{kind, statement_.substr(from, to - from), quote};
    };
    if (first == '"' || first == '\'') {
        const std::size_t end = closingQuote(statement_, start + 1, first);
        if (end == std::string_view::npos) {
            failAt(statement_.substr(start));
        }
        return token(JetToken::Kind::text, start + 1, end, end + 1, first);
    }
    if (first == '[') {
        const std::size_t end = statement_.find(']', start);
        if (end == std::string_view::npos || end == start + 1) {
            failAt(statement_.substr(start));
        }
        return token(JetToken::Kind::bracketedName, start + 1, end, end + 1);
    }
    if (startsName(first)) {
        const std::size_t end =
            endOfWhile(statement_, start, [](char c) { return startsName(c) || isDigit(c); });
        return token(JetToken::Kind::name, start, end, end);
    }
    if (isDigit(first)) {
        const std::size_t end = endOfWhile(statement_, start, [](char c) { return isDigit(c) || c == '.'; });
        return token(JetToken::Kind::number, start, end, end);
    }
    for (const std::string_view symbol : {"<=", ">=", "<>"}) {
        if (statement_.substr(start).starts_with(symbol)) {
            return token(JetToken::Kind::symbol, start, start + 2, start + 2);
        }
    }
    if (std::string_view("=<>&+-*/(),.;").find(first) == std::string_view::npos) {
        failAt(statement_.substr(start));
    }
    return token(JetToken::Kind::symbol, start, start + 1, start + 1);
}

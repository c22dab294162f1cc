#include "collect/tabSeparated.h"

#include <utility>

namespace {

constexpr std::size_t mostBytes = std::size_t{1} << 20; // of a row
constexpr std::size_t mostBytesOfAll = std::size_t{256} << 20;

[[noreturn]] void refuse() {
    throw ServerError(ServerError::Kind::strange, errorNumber::inputOutput,
                      "The server's answer is not the one to this question");
}

// What a backslash and the letter stand for.
char unescaped(char letter) {
    switch (letter) {
    case '0':
        return '\0';
    case 'b':
        return '\b';
    case 'f':
        return '\f';
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    default:
        return letter;
    }
}

} // namespace

TabSeparated::TabSeparated(std::size_t fields, std::size_t mostRows, std::function<void(Row& row)> take)
    : fields_(fields), rowsLeft_(mostRows), take_(std::move(take)), row_(1) {}

void TabSeparated::add(std::string_view piece) {
    for (const char c : piece) {
        addByte(c);
    }
}

void TabSeparated::addByte(char c) {
    if (++bytes_ > mostBytes || ++allBytes_ > mostBytesOfAll) {
        refuse();
    }
    if (isEscaped_) {
        row_.back().push_back(unescaped(c));
        isEscaped_ = false;
    } else if (c == '\\') {
        isEscaped_ = true;
    } else if (c == '\t' && row_.size() < fields_) {
        row_.emplace_back();
    } else if (c == '\n') {
        endRow();
    } else if (c == '\t') {
        refuse();
    } else {
        row_.back().push_back(c);
    }
}

void TabSeparated::endRow() {
    if (row_.size() != fields_ || rowsLeft_-- == 0) {
        refuse();
    }
    take_(row_);
    row_.assign(1, {});
    bytes_ = 0;
}

void TabSeparated::finish() const {
    if (bytes_ != 0) {
        refuse();
    }
}

#pragma once

#include <charconv>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "collect/httpClient.h"

// Reads an answer in the form "TabSeparated", which comes in pieces cut anywhere: fields between tabs, rows
// that end in a line feed, some bytes as a backslash and a letter.
class TabSeparated {
public:
    using Row = std::vector<std::string>;
    // Takes each row; its fields may be moved from. Every row has that many fields, and there are at most so
    // many rows.
    TabSeparated(std::size_t fields, std::size_t mostRows, std::function<void(Row& row)> take);

    // Throws ServerError (strange) if a row has another number of fields, there are more rows, or more bytes
    // than these can have.
    void add(std::string_view piece);
    // Throws it if the last row is not complete.
    void finish() const;

private:
    void addByte(char c);
    void endRow();

    std::size_t fields_;
    std::size_t rowsLeft_;
    std::function<void(Row& row)> take_;
    Row row_;
    std::size_t bytes_ = 0; // of the row
    std::size_t allBytes_ = 0;
    bool isEscaped_ = false;
};

// A field that is a whole number. Throws ServerError (strange) if it is none, or too large.
template <class Number>
[[nodiscard]] Number wholeNumber(std::string_view field) {
    Number number = 0;
    const char* const end = field.data() + field.size();
    const auto result = std::from_chars(field.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end) {
        throw ServerError(ServerError::Kind::strange, errorNumber::inputOutput,
                          "The server's answer holds no number where one belongs");
    }
    return number;
}

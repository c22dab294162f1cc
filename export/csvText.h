#pragma once

#include <string>
#include <string_view>

// Values in texts that spreadsheet programs read.
namespace modExport {

// Appends the value with each quote doubled; without a quote character, unchanged.
void appendQuotesDoubled(std::string& result, std::string_view value, std::string_view quote);

// The value of a loaded row: a program that takes the beginning of a value for that of a formula is kept from
// it by an apostrophe.
[[nodiscard]] std::string withoutFormula(std::string_view value);

} // namespace modExport

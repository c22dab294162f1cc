#include "export/csvText.h"

void modExport::appendQuotesDoubled(std::string& result, std::string_view value, std::string_view quote) {
    while (!quote.empty()) {
        const std::size_t at = value.find(quote);
        if (at == std::string_view::npos) {
            break;
        }
        result.append(value.substr(0, at + quote.size())).append(quote);
        value.remove_prefix(at + quote.size());
    }
    result.append(value);
}

std::string modExport::withoutFormula(std::string_view value) {
    const bool begins = value.find_first_of("=+-@\t\r") == 0;
    return (begins ? "'" : "") + std::string(value);
}

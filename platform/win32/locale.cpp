#include "platform/locale.h"

#include <windows.h>

#include <array>
#include <vector>

#include "platform/win32/wide.h"

namespace platform {

namespace {

std::string separator(LCTYPE kind, std::string_view substitute) {
    std::array<wchar_t, 16> text{};
    const int length =
        ::GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, kind, text.data(), static_cast<int>(text.size()));
    return length > 0 ? narrow(text.data()) : std::string(substitute);
}

// The lower case of every letter that is one UTF-16 unit, asked for once.
std::vector<wchar_t> lowerCaseTable() {
    std::vector<wchar_t> letters(0x10000);
    for (std::size_t i = 0; i < letters.size(); ++i) {
        letters[i] = static_cast<wchar_t>(i);
    }
    std::vector<wchar_t> lower = letters;
    // Not the surrogates, which a call would take in pairs.
    for (const auto& [first, end] : {std::pair(1, 0xD800), std::pair(0xE000, 0x10000)}) {
        ::LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_LOWERCASE, letters.data() + first, end - first,
                        lower.data() + first, end - first, nullptr, nullptr, 0);
    }
    return lower;
}

} // namespace

const NumberSeparators& numberSeparators() {
    static const NumberSeparators separators{separator(LOCALE_STHOUSAND, ","),
                                             separator(LOCALE_SDECIMAL, ".")};
    return separators;
}

char32_t lowerCaseLetter(char32_t letter) {
    static const std::vector<wchar_t> table = lowerCaseTable();
    return letter < table.size() ? table[letter] : letter;
}

bool namesIgnoreCase() noexcept {
    return true;
}

// The C library's region stays "C" as long as nobody sets another, and here nobody does.
PlainNumbers::PlainNumbers() = default;
PlainNumbers::~PlainNumbers() = default;

} // namespace platform

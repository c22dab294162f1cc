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

// The lower case of every letter that has one UTF-16 unit, queried once.
std::vector<wchar_t> lowerCaseTable() {
    std::vector<wchar_t> letters(0x10000);
    for (std::size_t i = 0; i < letters.size(); ++i) {
        letters[i] = static_cast<wchar_t>(i);
    }
    std::vector<wchar_t> lower = letters;
    // Without the surrogates, which a call would treat as pairs.
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

std::optional<std::string> sortKey(std::string_view text, std::string_view language, bool numbers) {
    const DWORD kind = LCMAP_SORTKEY | NORM_IGNORECASE | (numbers ? SORT_DIGITSASNUMBERS : 0);
    const std::wstring locale = wide(language);
    const std::wstring letters = wide(text);
    std::string key;
    const auto make = [&] { // returns the length in bytes; without space for a key, it only counts
        return ::LCMapStringEx(locale.c_str(), kind, letters.data(), static_cast<int>(letters.size()),
                               reinterpret_cast<wchar_t*>(key.data()), static_cast<int>(key.size()), // NOLINT
                               nullptr, nullptr, 0);
    };
    key.resize(static_cast<std::size_t>(make()));
    if (!key.empty()) {
        make();
    }
    return key;
}

// The C library's region stays "C" unless someone sets another one, and nobody does here.
PlainNumbers::PlainNumbers() = default;
PlainNumbers::~PlainNumbers() = default;

} // namespace platform

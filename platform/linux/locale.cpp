#include "platform/locale.h"

#include <langinfo.h>
#include <locale.h>
#include <wctype.h>

#include <cstdlib>

#include "platform/text.h"

namespace platform {

namespace {

// The name of the region whose number format applies, found in the same order as by the C library.
std::string_view numericRegion() {
    for (const char* variable : {"LC_ALL", "LC_NUMERIC", "LANG"}) {
        const char* value = std::getenv(variable);
        if (value != nullptr && *value != '\0') {
            return value;
        }
    }
    return "C";
}

// In regions that do not use UTF-8, a separator is a single byte, usually a no-break space.
std::string asUtf8(std::string_view separator, std::string_view substitute) {
    std::size_t position = 0;
    while (position < separator.size()) {
        if (decodeCodePoint(separator, position) == invalidCodePoint) {
            return std::string(substitute);
        }
    }
    return std::string(separator);
}

NumberSeparators readSeparators() {
    NumberSeparators separators{",", "."};
    const std::string_view region = numericRegion();
    if (region == "C" || region == "POSIX" || region.starts_with("C.")) {
        return separators;
    }
    if (const locale_t locale = ::newlocale(LC_NUMERIC_MASK | LC_CTYPE_MASK, "", nullptr)) {
        separators.grouping = asUtf8(::nl_langinfo_l(THOUSEP, locale), " ");
        separators.decimal = asUtf8(::nl_langinfo_l(RADIXCHAR, locale), ".");
        ::freelocale(locale);
    }
    return separators;
}

} // namespace

const NumberSeparators& numberSeparators() {
    static const NumberSeparators separators = readSeparators();
    return separators;
}

char32_t lowerCaseLetter(char32_t letter) {
    static const locale_t locale = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale == nullptr ? letter
                             : static_cast<char32_t>(::towlower_l(static_cast<wint_t>(letter), locale));
}

bool namesIgnoreCase() noexcept {
    return false;
}

std::optional<std::string> sortKey(std::string_view /*text*/, std::string_view /*language*/,
                                   bool /*numbers*/) {
    return std::nullopt;
}

PlainNumbers::PlainNumbers() {
    static const locale_t plain = ::newlocale(LC_NUMERIC_MASK, "C", ::duplocale(LC_GLOBAL_LOCALE));
    if (plain != nullptr) {
        previous_ = ::uselocale(plain);
    }
}

PlainNumbers::~PlainNumbers() {
    if (previous_ != nullptr) {
        ::uselocale(static_cast<locale_t>(previous_));
    }
}

} // namespace platform

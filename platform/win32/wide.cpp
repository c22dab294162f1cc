#include "platform/win32/wide.h"

#include "platform/text.h"

namespace platform {

namespace {

constexpr bool isHighSurrogate(wchar_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool isLowSurrogate(wchar_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

} // namespace

void appendNarrow(std::string& result, std::wstring_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t codePoint = text[i];
        if (isHighSurrogate(text[i]) && i + 1 < text.size() && isLowSurrogate(text[i + 1])) {
            codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (text[i + 1] - 0xDC00U);
            ++i;
        }
        appendCodePoint(result, codePoint);
    }
}

std::string narrow(std::wstring_view text) {
    std::string result;
    appendNarrow(result, text);
    return result;
}

std::wstring wide(std::string_view text) {
    std::wstring result;
    result.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        if (const char32_t surrogate = loneSurrogateAt(text, position); surrogate != 0) {
            result.push_back(static_cast<wchar_t>(surrogate));
            position += 3;
            continue;
        }
        const char32_t codePoint = decodeCodePoint(text, position);
        if (codePoint == invalidCodePoint) {
            result.push_back(L'\xFFFD');
        } else if (codePoint < 0x10000) {
            result.push_back(static_cast<wchar_t>(codePoint));
        } else {
            result.push_back(static_cast<wchar_t>(0xD800 + ((codePoint - 0x10000) >> 10)));
            result.push_back(static_cast<wchar_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF)));
        }
    }
    return result;
}

std::wstring widePath(std::string_view internalPath) {
    std::wstring path = wide(internalPath);
    if (path.starts_with(L"\\\\.\\") || path.empty()) { // a device
        return path;
    }
    const bool isShare = path.starts_with(L"\\\\");
    const bool isDriveRoot = path.ends_with(L":\\");
    if (path.ends_with(L'\\') && !isDriveRoot) {
        path.pop_back();
    }
    return isShare ? L"\\\\?\\UNC" + path.substr(1) : L"\\\\?\\" + path;
}

} // namespace platform

#include "platform/profile.h"

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

#include "platform/environment.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/win32/wide.h"

// The system's calls read a file without a byte order mark in the process's code page, which the manifest
// sets to UTF-8. Without a file name they would use win.ini.
namespace platform {

namespace {

constexpr std::uint64_t largestFile = 1U << 20;

// A file that is deleted with the object.
class ScratchFile {
public:
    explicit ScratchFile(std::string_view content)
        : path_(temporaryFolder() + "spannory-" + std::to_string(::GetCurrentProcessId()) + ".ini") {
        FileSink file(path_);
        file.write(content);
        file.close();
    }
    ~ScratchFile() { ::DeleteFileW(widePath(path_).c_str()); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    [[nodiscard]] const std::string& path() const noexcept { return path_; }

private:
    std::string path_;
};

bool isText(std::string_view bytes) {
    return bytes.starts_with("\xFF\xFE") || bytes.find('\0') == std::string_view::npos;
}

// Lets `write` change a copy: the system's call writes in place, and a full disk or a crash would leave half
// a file.
bool edit(std::string_view filePath, const std::function<BOOL(const wchar_t*)>& write) noexcept {
    try {
        if (filePath.empty()) {
            return false;
        }
        const std::string before = somethingExists(filePath) ? readFile(filePath, largestFile) : "";
        if (!isText(before)) {
            return false;
        }
        const ScratchFile copy(before);
        if (write(widePath(copy.path()).c_str()) == 0) {
            return false;
        }
        if (const std::string after = readFile(copy.path()); after != before) {
            replaceFile(filePath, after, NewFile::own);
        }
        return true;
    } catch (...) {
        return false;
    }
}

// The value's first characters; nothing if there is no such file, section or key.
std::optional<std::wstring> valueUpTo(std::size_t length, std::string_view section, std::string_view key,
                                      std::string_view filePath) {
    constexpr std::wstring_view none = L"\n"; // no line contains it
    if (filePath.empty()) {
        return std::nullopt;
    }
    std::wstring value(length + 1, L'\0');
    value.resize(::GetPrivateProfileStringW(wide(section).c_str(), wide(key).c_str(), none.data(),
                                            value.data(), static_cast<DWORD>(value.size()),
                                            widePath(toInternal(filePath)).c_str()));
    return value == none ? std::nullopt : std::optional(value);
}

} // namespace

std::string readProfileValue(std::string_view section, std::string_view key, std::string_view defaultText,
                             std::string_view filePath) {
    const auto value = valueUpTo(longestProfileValue, section, key, filePath);
    return value ? narrow(*value) : std::string(defaultText);
}

bool profileValueIsCut(std::string_view section, std::string_view key, std::string_view filePath) {
    const auto value = valueUpTo(2 * longestProfileValue, section, key, filePath);
    return value && value->size() > longestProfileValue;
}

// The system lists lines without "=", too; they have no value to read.
std::vector<std::string> profileKeys(std::string_view section, std::string_view filePath) {
    if (filePath.empty()) {
        return {};
    }
    const std::wstring file = widePath(toInternal(filePath));
    constexpr std::size_t cutAtEnd = 2; // what the system leaves of a buffer that is too small
    std::wstring names;
    DWORD length = 0;
    do {
        names.assign(names.empty() ? 4096 : 2 * names.size(), L'\0');
        length = ::GetPrivateProfileStringW(wide(section).c_str(), nullptr, L"", names.data(),
                                            static_cast<DWORD>(names.size()), file.c_str());
    } while (length + cutAtEnd >= names.size() && names.size() <= largestFile);
    std::vector<std::string> keys;
    for (std::size_t start = 0; start < length;) {
        const std::size_t end = names.find(L'\0', start);
        const std::string key = narrow(names.substr(start, end - start));
        if (!key.empty() && valueUpTo(1, section, key, filePath)) {
            keys.push_back(key);
        }
        start = end + 1;
    }
    return keys;
}

bool writeProfileValue(std::string_view section, std::string_view key, std::string_view value,
                       std::string_view filePath) noexcept {
    return edit(filePath, [=](const wchar_t* file) {
        return ::WritePrivateProfileStringW(wide(section).c_str(), wide(key).c_str(), wide(value).c_str(),
                                            file);
    });
}

bool deleteProfileKey(std::string_view section, std::string_view key, std::string_view filePath) noexcept {
    return edit(filePath, [=](const wchar_t* file) {
        return ::WritePrivateProfileStringW(wide(section).c_str(), wide(key).c_str(), nullptr, file);
    });
}

bool deleteProfileSection(std::string_view section, std::string_view filePath) noexcept {
    return edit(filePath, [=](const wchar_t* file) {
        return ::WritePrivateProfileStringW(wide(section).c_str(), nullptr, nullptr, file);
    });
}

} // namespace platform

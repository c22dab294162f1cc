#include "platform/profile.h"

#include <windows.h>

#include <array>
#include <functional>

#include "platform/environment.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/win32/wide.h"

// The calls take a file without a byte order mark for text of the process's code page, which the manifest
// makes UTF-8. Where no file is named they would use win.ini.
namespace platform {

namespace {

constexpr std::uint64_t largestFile = 1U << 20;

// A file that is gone with the object.
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

// Lets `write` write to a copy, for the call writes in place, where a full disk or a crash would leave half a
// file.
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
            replaceFile(filePath, after);
        }
        return true;
    } catch (...) {
        return false;
    }
}

} // namespace

std::string readProfileValue(std::string_view section, std::string_view key, std::string_view defaultText,
                             std::string_view filePath) {
    constexpr std::wstring_view none = L"\n"; // no line holds it
    if (filePath.empty()) {
        return std::string(defaultText);
    }
    std::array<wchar_t, longestProfileValue + 1> value{};
    const DWORD length =
        ::GetPrivateProfileStringW(wide(section).c_str(), wide(key).c_str(), none.data(), value.data(),
                                   static_cast<DWORD>(value.size()), widePath(toInternal(filePath)).c_str());
    const std::wstring_view found(value.data(), length);
    return found == none ? std::string(defaultText) : narrow(found);
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

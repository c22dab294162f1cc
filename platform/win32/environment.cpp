#include "platform/environment.h"

#include <windows.h>

#include <shellapi.h>

#include <array>

#include "platform/paths.h"
#include "platform/win32/handle.h"
#include "platform/win32/wide.h"

namespace platform {

namespace {

constexpr DWORD longestPath = 32768;

std::string asFolder(std::string path) {
    if (!path.empty() && !path.ends_with('\\')) {
        path += '\\';
    }
    return path;
}

constexpr const wchar_t* versionKey = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";

std::string versionNumber(const wchar_t* name) {
    DWORD number = 0;
    DWORD size = sizeof number;
    const LSTATUS result =
        ::RegGetValueW(HKEY_LOCAL_MACHINE, versionKey, name, RRF_RT_REG_DWORD, nullptr, // NOLINT
                       &number, &size);
    return result == ERROR_SUCCESS ? std::to_string(number) : std::string();
}

std::string versionText(const wchar_t* name) {
    std::array<wchar_t, 64> text{};
    DWORD size = sizeof text;
    const LSTATUS result =
        ::RegGetValueW(HKEY_LOCAL_MACHINE, versionKey, name, RRF_RT_REG_SZ, nullptr, // NOLINT
                       text.data(), &size);
    return result == ERROR_SUCCESS ? narrow(text.data()) : std::string();
}

} // namespace

std::optional<std::string> environmentVariable(std::string_view name) {
    const std::wstring wideName = wide(name);
    std::wstring value(longestPath, L'\0');
    ::SetLastError(ERROR_SUCCESS);
    const DWORD length = ::GetEnvironmentVariableW(wideName.c_str(), value.data(), longestPath);
    if ((length == 0 && ::GetLastError() != ERROR_SUCCESS) || length > longestPath) {
        return std::nullopt;
    }
    return narrow({value.data(), length});
}

std::string hostName() {
    constexpr DWORD longestName = 256;
    std::wstring name(longestName, L'\0');
    DWORD length = longestName;
    const bool known = ::GetComputerNameExW(ComputerNameDnsHostname, name.data(), &length) != 0;
    return known ? narrow({name.data(), length}) : std::string();
}

// The calls that tell the version tell what the program's manifest claims to know.
std::string systemName() {
    const std::string major = versionNumber(L"CurrentMajorVersionNumber");
    if (major.empty()) {
        return "Windows";
    }
    return "Windows " + major + "." + versionNumber(L"CurrentMinorVersionNumber") + "." +
           versionText(L"CurrentBuildNumber");
}

std::string executableFolder() {
    std::wstring path(longestPath, L'\0');
    const DWORD length = ::GetModuleFileNameW(nullptr, path.data(), longestPath);
    const std::string file = toInternal(narrow({path.data(), length}));
    return file.substr(0, file.rfind('\\') + 1);
}

std::string userDataFolder() {
    const std::string base = environmentVariable("LOCALAPPDATA").value_or("");
    return base.empty() ? executableFolder() : asFolder(toInternal(base)) + "Spannory\\";
}

std::string shareFolder() {
    return executableFolder();
}

std::string temporaryFolder() {
    std::wstring path(longestPath, L'\0');
    const DWORD length = ::GetTempPathW(longestPath, path.data());
    return asFolder(toInternal(narrow({path.data(), length})));
}

// Only trying shows whether the folder's permissions allow it.
bool folderIsWritable(std::string_view path) {
    const std::string name = asFolder(std::string(path)) + "spannory-" +
                             std::to_string(::GetCurrentProcessId()) + "-" +
                             std::to_string(::GetTickCount64()) + ".tmp";
    const Handle file(::CreateFileW(widePath(name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
    return file.isOpen();
}

bool hasDisplay() {
    return true;
}

void keepSystemBoxesAway() {
    ::SetErrorMode(SEM_FAILCRITICALERRORS);
}

// There is no such limit on this system.
void letTooLargeWritesFail() {}

// The shell does not accept paths with the prefix for long paths.
bool openInAssociatedProgram(std::string_view path) {
    constexpr INT_PTR lastFailure = 32;
    HINSTANCE result =
        ::ShellExecuteW(nullptr, L"open", wide(toInternal(path)).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(result) > lastFailure; // NOLINT
}

bool saveDialogFollowsFileType() noexcept {
    return true;
}

} // namespace platform

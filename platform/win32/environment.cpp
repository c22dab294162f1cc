#include "platform/environment.h"

#include <windows.h>

#include <shellapi.h>

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

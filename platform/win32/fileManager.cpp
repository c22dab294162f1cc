#include "platform/fileManager.h"

#include <windows.h>

#include <shellapi.h>

#include <string>

#include "platform/win32/wide.h"

namespace platform {

bool showInFileManager(std::string_view internalPath) {
    constexpr INT_PTR lastFailure = 32;
    std::wstring path = wide(internalPath);
    if (path.ends_with(L'\\') && !path.ends_with(L":\\")) {
        path.pop_back();
    }
    const std::wstring arguments = L"/select,\"" + path + L"\""; // no name contains a quote
    HINSTANCE result =
        ::ShellExecuteW(nullptr, L"open", L"explorer.exe", arguments.c_str(), nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(result) > lastFailure; // NOLINT
}

} // namespace platform

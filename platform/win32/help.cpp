#include "platform/help.h"

#include <windows.h>

#include "platform/win32/wide.h"

namespace platform {

// The viewer is an optional part of the system, so it is loaded only when needed.
bool showCompiledHelp(std::uintptr_t window, std::string_view internalPath) {
    using HtmlHelp = HWND(WINAPI*)(HWND, LPCWSTR, UINT, DWORD_PTR);
    constexpr UINT showTableOfContents = 1;
    static const HMODULE viewer = ::LoadLibraryExW(L"hhctrl.ocx", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (viewer == nullptr) {
        return false;
    }
    const auto htmlHelp =
        reinterpret_cast<HtmlHelp>(reinterpret_cast<void*>(::GetProcAddress(viewer, "HtmlHelpW"))); // NOLINT
    if (htmlHelp == nullptr) {
        return false;
    }
    htmlHelp(reinterpret_cast<HWND>(window), wide(internalPath).c_str(), showTableOfContents, 0); // NOLINT
    return true;
}

} // namespace platform

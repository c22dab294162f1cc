#include "platform/help.h"

#include <windows.h>

#include <string>

#include "platform/win32/wide.h"

namespace platform {

// The viewer is an optional part of the system, so it is loaded only when needed.
bool showCompiledHelp(std::uintptr_t window, std::string_view internalPath, std::string_view page) {
    using HtmlHelp = HWND(WINAPI*)(HWND, LPCWSTR, UINT, DWORD_PTR);
    constexpr UINT showTopic = 0;
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
    std::wstring place = wide(internalPath);
    if (!page.empty()) {
        place.append(L"::/").append(wide(page));
    }
    return htmlHelp(reinterpret_cast<HWND>(window), place.c_str(), // NOLINT
                    page.empty() ? showTableOfContents : showTopic, 0) != nullptr;
}

} // namespace platform

#include "platform/shellIcons.h"

#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <memory>
#include <type_traits>

#include "platform/win32/wide.h"

namespace platform {

namespace {

// The system's list of small icons, which it owns.
HIMAGELIST smallIcons = nullptr;

struct DeleteObject {
    void operator()(HBITMAP bitmap) const { ::DeleteObject(bitmap); }
};
struct DeleteContext {
    void operator()(HDC context) const { ::DeleteDC(context); }
};

// What the icon looks like on a background of one colour, as 0x00RRGGBB.
std::vector<std::uint32_t> drawnOn(COLORREF background, int index, int size) {
    BITMAPINFO format{};
    format.bmiHeader = {sizeof(BITMAPINFOHEADER), size, -size, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const std::unique_ptr<std::remove_pointer_t<HDC>, DeleteContext> context(::CreateCompatibleDC(nullptr));
    const std::unique_ptr<std::remove_pointer_t<HBITMAP>, DeleteObject> bitmap(
        ::CreateDIBSection(context.get(), &format, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!bitmap) {
        return {};
    }
    HGDIOBJ before = ::SelectObject(context.get(), bitmap.get());
    ::ImageList_DrawEx(smallIcons, index, context.get(), 0, 0, size, size, background, CLR_NONE, ILD_NORMAL);
    ::GdiFlush();
    const auto* pixels = static_cast<const std::uint32_t*>(bits);
    std::vector<std::uint32_t> result(pixels, pixels + static_cast<std::size_t>(size) *
                                                           static_cast<std::size_t>(size));
    ::SelectObject(context.get(), before);
    return result;
}

} // namespace

bool hasShellIcons() noexcept {
    return true;
}

std::optional<int> shellIconIndex(std::string_view internalPath, unsigned sizeFlag) {
    constexpr UINT wanted = SHGFI_SYSICONINDEX | SHGFI_EXETYPE | SHGFI_TYPENAME | SHGFI_DISPLAYNAME |
                            SHGFI_SHELLICONSIZE | SHGFI_SMALLICON;
    std::string_view path = internalPath;
    if (path.ends_with('\\') && !path.ends_with(":\\")) {
        path.remove_suffix(1);
    }
    SHFILEINFOW info{};
    const DWORD_PTR list = ::SHGetFileInfoW(wide(path).c_str(), 0, &info, sizeof info, wanted | sizeFlag);
    if (list == 0) {
        return std::nullopt;
    }
    smallIcons = reinterpret_cast<HIMAGELIST>(list); // NOLINT: as the call has it
    return info.iIcon;
}

// Drawn on black and on white: the difference tells how much of the background shows, whatever kind of
// transparency the icon has.
std::optional<IconPicture> shellIconPicture(int index) {
    int width = 0;
    int height = 0;
    if (smallIcons == nullptr || ::ImageList_GetIconSize(smallIcons, &width, &height) == 0 ||
        width != height) {
        return std::nullopt;
    }
    const std::vector<std::uint32_t> onBlack = drawnOn(RGB(0, 0, 0), index, width);
    const std::vector<std::uint32_t> onWhite = drawnOn(RGB(255, 255, 255), index, width);
    if (onBlack.empty() || onWhite.empty()) {
        return std::nullopt;
    }
    IconPicture picture{width, onBlack};
    for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
        const std::uint32_t shows = (onWhite[i] & 0xFF) - (onBlack[i] & 0xFF);
        picture.pixels[i] = (onBlack[i] & 0xFFFFFF) | (0xFF - (shows & 0xFF)) << 24;
    }
    return picture;
}

} // namespace platform

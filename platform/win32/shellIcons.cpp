#include "platform/shellIcons.h"

#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <algorithm>
#include <memory>
#include <type_traits>

#include "platform/win32/wide.h"

namespace platform {

namespace {

// The system's list of small icons; the system owns it.
HIMAGELIST smallIcons = nullptr;

struct DeleteObject {
    void operator()(HBITMAP bitmap) const { ::DeleteObject(bitmap); }
};
struct DestroyIcon {
    void operator()(HICON icon) const { ::DestroyIcon(icon); }
};
struct DeleteContext {
    void operator()(HDC context) const { ::DeleteDC(context); }
};

// The icon drawn on a background of one colour, as 0x00RRGGBB.
std::vector<std::uint32_t> drawnOn(std::uint32_t background, HICON icon, int size) {
    BITMAPINFO format{};
    format.bmiHeader = {sizeof(BITMAPINFOHEADER), size, -size, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const std::unique_ptr<std::remove_pointer_t<HDC>, DeleteContext> context(::CreateCompatibleDC(nullptr));
    const std::unique_ptr<std::remove_pointer_t<HBITMAP>, DeleteObject> bitmap(
        ::CreateDIBSection(context.get(), &format, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!bitmap) {
        return {};
    }
    auto* pixels = static_cast<std::uint32_t*>(bits);
    const std::size_t count = static_cast<std::size_t>(size) * static_cast<std::size_t>(size);
    std::fill(pixels, pixels + count, background);
    HGDIOBJ before = ::SelectObject(context.get(), bitmap.get());
    ::DrawIconEx(context.get(), 0, 0, icon, size, size, 0, nullptr, DI_NORMAL);
    ::GdiFlush();
    ::SelectObject(context.get(), before);
    return {pixels, pixels + count};
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
    const std::wstring name = wide(path);
    DWORD_PTR list = ::SHGetFileInfoW(name.c_str(), 0, &info, sizeof info, wanted | sizeFlag);
    if (list == 0) { // some shells recognise executables only in this way
        list = ::SHGetFileInfoW(name.c_str(), 0, &info, sizeof info, (wanted & ~SHGFI_EXETYPE) | sizeFlag);
    }
    if (list == 0) {
        return std::nullopt;
    }
    smallIcons = reinterpret_cast<HIMAGELIST>(list); // NOLINT: as the call has it
    return info.iIcon;
}

// Drawn on black and on white: the difference shows how transparent each pixel is, whatever kind of
// transparency the icon uses.
std::optional<IconPicture> shellIconPicture(int index) {
    int width = 0;
    int height = 0;
    if (smallIcons == nullptr || ::ImageList_GetIconSize(smallIcons, &width, &height) == 0 ||
        width != height) {
        return std::nullopt;
    }
    const std::unique_ptr<std::remove_pointer_t<HICON>, DestroyIcon> icon(
        ::ImageList_GetIcon(smallIcons, index, ILD_TRANSPARENT));
    if (!icon) {
        return std::nullopt;
    }
    const std::vector<std::uint32_t> onBlack = drawnOn(0, icon.get(), width);
    const std::vector<std::uint32_t> onWhite = drawnOn(0xFFFFFF, icon.get(), width);
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

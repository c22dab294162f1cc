#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

// The icons that the system's own shell shows for files. Where there is no such shell every call gives
// nothing.
namespace platform {

// Whether there are any.
[[nodiscard]] bool hasShellIcons() noexcept;

// The number, in the system's list of icons, of the small icon for what is at an internal path. `sizeFlag`:
// asks for another one than usual (2 for an open folder). Nothing when the shell has none.
[[nodiscard]] std::optional<int> shellIconIndex(std::string_view internalPath, unsigned sizeFlag);

struct IconPicture {
    int size = 0;                      // pixels in width and height
    std::vector<std::uint32_t> pixels; // row by row from the top, as 0xAARRGGBB with premultiplied colours
};

// The picture of a small icon in the system's list.
[[nodiscard]] std::optional<IconPicture> shellIconPicture(int index);

} // namespace platform

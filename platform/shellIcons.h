#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

// The icons that the system's own shell shows for files. Without such a shell, every call returns nothing.
namespace platform {

// Whether the system has such icons.
[[nodiscard]] bool hasShellIcons() noexcept;

// The number, in the system's list of icons, of the small icon for an internal path. `sizeFlag` selects a
// variant (2 for an open folder). Nothing if the shell has no such icon.
[[nodiscard]] std::optional<int> shellIconIndex(std::string_view internalPath, unsigned sizeFlag);

struct IconPicture {
    int size = 0;                      // width and height in pixels
    std::vector<std::uint32_t> pixels; // row by row from the top, as 0xAARRGGBB with premultiplied colours
};

// The picture of a small icon from the system's list.
[[nodiscard]] std::optional<IconPicture> shellIconPicture(int index);

} // namespace platform

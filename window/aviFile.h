#pragma once

#include <QImage>
#include <chrono>
#include <cstdint>
#include <string_view>
#include <vector>

// A short animation, ready to play.
struct AviClip {
    std::vector<QImage> frames; // all of the same size
    std::chrono::microseconds frameTime{0};
};

// Reads the files that the system's own animation control plays: AVI files with one video stream of
// uncompressed frames with 8 (with a palette), 24 or 32 bits per pixel. Nothing in a file is trusted.
namespace modAvi {

// The error number for a file that is not such an animation.
inline constexpr int invalidFileFormat = 321;

// No animation of this kind has more bytes than this.
inline constexpr std::uint64_t longestFile = 16ULL << 20;

// The clip has at least one frame and shows each for 10 milliseconds to 1 second. Pixels with the colour of
// the first frame's top left pixel are transparent. Throws RuntimeError (321) describing what is wrong with
// the bytes.
[[nodiscard]] AviClip readAvi(std::string_view bytes);

} // namespace modAvi

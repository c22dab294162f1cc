#pragma once

#include <QImage>
#include <chrono>
#include <cstdint>
#include <string_view>
#include <vector>

// A short animation, as it is played.
struct AviClip {
    std::vector<QImage> frames; // all of one size
    std::chrono::microseconds frameTime{0};
};

// Reads the files that the system's own animation control plays: an AVI file with one video stream of
// uncompressed frames of 8 (with a palette), 24 or 32 bits a pixel. Nothing in a file is trusted.
namespace modAvi {

// What a file that is no such animation raises.
inline constexpr int invalidFileFormat = 321;

// More bytes than this no animation of that kind has.
inline constexpr std::uint64_t longestFile = 16ULL << 20;

// The clip has at least one frame and shows each for 10 milliseconds to 1 second. What has the colour of the
// first frame's top left pixel is transparent. Throws RuntimeError (321) with what is wrong with the bytes.
[[nodiscard]] AviClip readAvi(std::string_view bytes);

} // namespace modAvi

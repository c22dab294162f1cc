// The bytes of an AVI file: it is refused, or becomes a clip within the bounds.

#include "fuzz/support/input.h"
#include "fuzz/support/require.h"
#include "window/aviFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        using namespace std::chrono_literals;
        const AviClip clip = modAvi::readAvi(Input(data, size).rest());
        require(!clip.frames.empty(), "a clip has a frame");
        require(clip.frameTime >= 10ms && clip.frameTime <= 1s, "a frame's time is bounded");
        for (const QImage& frame : clip.frames) {
            require(!frame.isNull() && frame.size() == clip.frames.front().size(), "frames are of one size");
        }
        require(clip.frames.front().pixel(0, 0) == qRgba(0, 0, 0, 0), "the top left pixel is transparent");
    } catch (const RuntimeError& error) {
        require(error.number() == modAvi::invalidFileFormat, "a refused file is no animation");
    }
    return 0;
}

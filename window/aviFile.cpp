#include "window/aviFile.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <optional>
#include <string>

#include "platform/runtimeError.h"

namespace {

constexpr int mostSide = 1024;                  // pixels
constexpr std::int64_t mostPixels = 16LL << 20; // in all frames together
constexpr std::size_t mostFrames = 10'000;
constexpr std::chrono::microseconds shortestFrame = std::chrono::milliseconds(10);
constexpr std::chrono::microseconds longestFrame = std::chrono::seconds(1);

[[noreturn]] void refuse(const std::string& why) {
    throw RuntimeError(modAvi::invalidFileFormat, "Invalid file format: " + why);
}

std::uint8_t byteAt(std::string_view bytes, std::size_t at) {
    if (at >= bytes.size()) {
        refuse("a part of the animation is too short");
    }
    return static_cast<std::uint8_t>(bytes[at]);
}

// Numbers are stored with the low byte first.
std::uint32_t numberAt(std::string_view bytes, std::size_t at, std::size_t length = 4) {
    std::uint32_t number = 0;
    for (std::size_t i = length; i > 0; --i) {
        number = (number << 8U) | byteAt(bytes, at + i - 1);
    }
    return number;
}

struct Chunk {
    std::string_view name; // four characters; for a list, its type
    bool isList = false;
    std::string_view content;
};

// Reads the chunks of a list one by one.
class Chunks {
public:
    explicit Chunks(std::string_view bytes) : rest_(bytes) {}

    // Nothing at the end. A list's type is not part of its content.
    std::optional<Chunk> next() {
        constexpr std::size_t headLength = 8;
        if (rest_.size() < headLength) {
            return std::nullopt;
        }
        const std::size_t length = numberAt(rest_, 4);
        if (length > rest_.size() - headLength) {
            refuse("the animation is cut off");
        }
        Chunk chunk{rest_.substr(0, 4), false, rest_.substr(headLength, length)};
        const std::size_t padded = headLength + length + length % 2;
        rest_.remove_prefix(std::min(padded, rest_.size()));
        if (chunk.name == "LIST" || chunk.name == "RIFF") {
            if (chunk.content.size() < 4) {
                refuse("a list without a type");
            }
            chunk = {chunk.content.substr(0, 4), true, chunk.content.substr(4)};
        }
        return chunk;
    }

    // The content of the next chunk with that name.
    std::string_view find(std::string_view name, bool isList) {
        while (const std::optional<Chunk> chunk = next()) {
            if (chunk->name == name && chunk->isList == isList) {
                return chunk->content;
            }
        }
        refuse("the animation has no part \"" + std::string(name) + "\"");
    }

private:
    std::string_view rest_;
};

// How the frames' pixels are stored.
struct PixelFormat {
    int width = 0;
    int height = 0;
    bool topDown = false;
    std::size_t bytesPerPixel = 0;
    std::vector<QRgb> palette; // 256 colours if a pixel has one byte

    [[nodiscard]] std::size_t bytesPerLine() const { // a multiple of four
        return (static_cast<std::size_t>(width) * bytesPerPixel + 3) / 4 * 4;
    }
};

QRgb colourAt(std::string_view bytes, std::size_t at) {
    return qRgb(byteAt(bytes, at + 2), byteAt(bytes, at + 1), byteAt(bytes, at));
}

// Read from a stream's format chunk: a bitmap's header and palette.
PixelFormat pixelFormat(std::string_view header) {
    PixelFormat format;
    const std::uint32_t headerLength = numberAt(header, 0);
    const auto width = static_cast<std::int32_t>(numberAt(header, 4));
    const auto height = static_cast<std::int32_t>(numberAt(header, 8));
    const std::uint32_t bits = numberAt(header, 14, 2);
    const std::uint32_t compression = numberAt(header, 16);
    if (width < 1 || width > mostSide || height == 0 || height < -mostSide || height > mostSide) {
        refuse("a frame size of " + std::to_string(width) + " by " + std::to_string(height) + " pixels");
    }
    if (compression != 0 || (bits != 8 && bits != 24 && bits != 32)) {
        refuse("only uncompressed frames with 8, 24 or 32 bits per pixel can be played");
    }
    format.width = width;
    format.height = std::abs(height);
    format.topDown = height < 0;
    format.bytesPerPixel = bits / 8;
    if (bits == 8) {
        constexpr std::uint32_t mostColours = 256;
        const std::uint32_t given = numberAt(header, 32);
        const std::uint32_t colours = given == 0 ? mostColours : std::min(given, mostColours);
        format.palette.assign(mostColours, qRgb(0, 0, 0));
        for (std::uint32_t i = 0; i < colours; ++i) {
            format.palette[i] = colourAt(header, std::size_t{headerLength} + std::size_t{4} * i);
        }
    }
    return format;
}

QImage readFrame(std::string_view bytes, const PixelFormat& format) {
    if (bytes.size() < format.bytesPerLine() * static_cast<std::size_t>(format.height)) {
        refuse("a frame is too short");
    }
    QImage frame(format.width, format.height, QImage::Format_ARGB32);
    if (frame.isNull()) {
        throw RuntimeError(errorNumber::outOfMemory);
    }
    for (int y = 0; y < format.height; ++y) {
        auto* line = reinterpret_cast<QRgb*>(frame.scanLine(format.topDown ? y : format.height - 1 - y));
        std::size_t at = format.bytesPerLine() * static_cast<std::size_t>(y);
        for (int x = 0; x < format.width; ++x) {
            line[x] = format.palette.empty() ? colourAt(bytes, at) : format.palette[byteAt(bytes, at)];
            at += format.bytesPerPixel;
        }
    }
    return frame;
}

void makeTransparent(QImage& frame, QRgb key) {
    for (int y = 0; y < frame.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(frame.scanLine(y));
        std::replace(line, line + frame.width(), key, qRgba(0, 0, 0, 0));
    }
}

struct Stream {
    std::string number; // the two digits at the start of its frames' names
    PixelFormat format;
};

// The first video stream in the header list.
Stream videoStream(std::string_view headers) {
    Chunks parts(headers);
    for (int number = 0; number < 100; ++number) {
        Chunks stream(parts.find("strl", true));
        if (stream.find("strh", false).starts_with("vids")) {
            return {std::string(number < 10 ? "0" : "") + std::to_string(number),
                    pixelFormat(stream.find("strf", false))};
        }
    }
    refuse("the animation has no pictures");
}

std::vector<QImage> readFrames(std::string_view movie, const Stream& stream) {
    std::vector<QImage> frames;
    std::int64_t pixels = 0;
    Chunks chunks(movie);
    while (const std::optional<Chunk> chunk = chunks.next()) {
        const bool isFrame = !chunk->isList && chunk->name.starts_with(stream.number) &&
                             (chunk->name.ends_with("db") || chunk->name.ends_with("dc"));
        if (!isFrame) {
            continue;
        }
        const bool repeats = chunk->content.empty() && !frames.empty();
        pixels += repeats ? 0 : std::int64_t{stream.format.width} * stream.format.height;
        if (frames.size() >= mostFrames || pixels > mostPixels) {
            refuse("the animation is too long");
        }
        frames.push_back(repeats ? frames.back() : readFrame(chunk->content, stream.format));
    }
    if (frames.empty()) {
        refuse("the animation has no frames");
    }
    return frames;
}

} // namespace

AviClip modAvi::readAvi(std::string_view bytes) {
    if (!bytes.starts_with("RIFF")) {
        refuse("not an animation");
    }
    Chunks top(Chunks(bytes).find("AVI ", true));
    const std::string_view headers = top.find("hdrl", true);
    const std::uint32_t frameTime = numberAt(Chunks(headers).find("avih", false), 0);
    const Stream stream = videoStream(headers);

    AviClip clip;
    clip.frameTime = std::clamp(std::chrono::microseconds(frameTime), shortestFrame, longestFrame);
    clip.frames = readFrames(top.find("movi", true), stream);
    const QRgb key = clip.frames.front().pixel(0, 0);
    for (QImage& frame : clip.frames) {
        makeTransparent(frame, key);
    }
    return clip;
}

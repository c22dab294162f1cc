#include "support/zipPart.h"

#include <zlib.h>

#include <cstdint>

namespace {

std::uint32_t numberAt(std::string_view bytes, std::size_t position, int size) {
    std::uint32_t number = 0;
    for (int i = size - 1; i >= 0; --i) {
        number = number << 8 | static_cast<unsigned char>(bytes[position + static_cast<std::size_t>(i)]);
    }
    return number;
}

std::string inflated(std::string_view bytes, std::size_t size) {
    std::string content(size, ' ');
    z_stream stream{};
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data())); // NOLINT: it is only read
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(content.data()); // NOLINT
    stream.avail_out = static_cast<uInt>(content.size());
    inflateInit2(&stream, -MAX_WBITS); // NOLINT: without a header
    const bool whole = inflate(&stream, Z_FINISH) == Z_STREAM_END;
    inflateEnd(&stream);
    return whole ? content : "";
}

} // namespace

// Uses the directory at the archive's end, because the sizes before a file may be missing.
std::string zipPart(std::string_view archive, std::string_view name) {
    const std::size_t end = archive.rfind("PK\5\6");
    if (end == std::string_view::npos) {
        return {};
    }
    std::size_t entry = numberAt(archive, end + 16, 4);
    while (archive.substr(entry, 4) == "PK\1\2") {
        const std::size_t nameLength = numberAt(archive, entry + 28, 2);
        if (archive.substr(entry + 46, nameLength) == name) {
            const std::size_t start = numberAt(archive, entry + 42, 4);
            const std::size_t data =
                start + 30 + numberAt(archive, start + 26, 2) + numberAt(archive, start + 28, 2);
            const std::string_view packed = archive.substr(data, numberAt(archive, entry + 20, 4));
            constexpr std::uint32_t stored = 0;
            return numberAt(archive, entry + 10, 2) == stored
                       ? std::string(packed)
                       : inflated(packed, numberAt(archive, entry + 24, 4));
        }
        entry += 46 + nameLength + numberAt(archive, entry + 30, 2) + numberAt(archive, entry + 32, 2);
    }
    return {};
}

#include "collect/gzip.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <limits>

#include "platform/runtimeError.h"

struct Gzip::State {
    z_stream stream{};
    std::array<char, 65536> buffer{};

    void run(int flush, std::string& result) {
        do {
            stream.next_out = reinterpret_cast<Bytef*>(buffer.data());
            stream.avail_out = static_cast<uInt>(buffer.size());
            deflate(&stream, flush);
            result.append(buffer.data(), buffer.size() - stream.avail_out);
        } while (stream.avail_out == 0);
    }
};

Gzip::Gzip() : state_(std::make_unique<State>()) {
    constexpr int asGzip = 16;
    constexpr int usualMemory = 8;
    if (deflateInit2(&state_->stream, Z_BEST_SPEED, Z_DEFLATED, MAX_WBITS + asGzip, usualMemory,
                     Z_DEFAULT_STRATEGY) != Z_OK) {
        throw RuntimeError(errorNumber::outOfMemory);
    }
}

Gzip::~Gzip() {
    deflateEnd(&state_->stream);
}

void Gzip::add(std::string_view bytes, std::string& result) {
    constexpr std::size_t most = std::numeric_limits<uInt>::max();
    while (!bytes.empty()) {
        const std::string_view part = bytes.substr(0, most);
        // The library does not write there.
        state_->stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(part.data()));
        state_->stream.avail_in = static_cast<uInt>(part.size());
        state_->run(Z_NO_FLUSH, result);
        bytes.remove_prefix(part.size());
    }
}

void Gzip::finish(std::string& result) {
    state_->run(Z_FINISH, result);
}

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

// The bytes that a fuzz target was given, taken apart from the front.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size)
        : rest_(reinterpret_cast<const char*>(data), size) {} // NOLINT: bytes as a text

    [[nodiscard]] bool isEmpty() const noexcept { return rest_.empty(); }

    // The text up to the next separator, which is passed over; at the end, what is left.
    std::string_view upTo(char separator) {
        const std::size_t end = std::min(rest_.find(separator), rest_.size());
        const std::string_view piece = rest_.substr(0, end);
        rest_.remove_prefix(std::min(end + 1, rest_.size()));
        return piece;
    }

    // The next byte; 0 at the end.
    unsigned char byte() {
        const char first = rest_.empty() ? '\0' : rest_.front();
        rest_.remove_prefix(rest_.empty() ? 0 : 1);
        return static_cast<unsigned char>(first);
    }

    [[nodiscard]] std::string_view rest() const noexcept { return rest_; }

private:
    std::string_view rest_;
};

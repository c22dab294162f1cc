#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

// The server's form of rows: numbers in little-endian bytes, texts behind their length.
namespace modRowBinary {

static_assert(std::endian::native == std::endian::little);

template <class Number>
void append(std::string& result, Number number) {
    static_assert(std::is_arithmetic_v<Number>);
    char bytes[sizeof number];
    std::memcpy(bytes, &number, sizeof number);
    result.append(bytes, sizeof number);
}

inline void appendText(std::string& result, std::string_view text) {
    constexpr std::size_t more = 0x80;
    std::size_t length = text.size();
    for (; length >= more; length /= more) {
        result.push_back(static_cast<char>(length % more + more));
    }
    result.push_back(static_cast<char>(length));
    result.append(text);
}

// Takes values off the front of some bytes. Once these end before a value does, `isComplete` stays false, and
// values are empty or 0.
class Reader {
public:
    // A longer text than this is none of a scan.
    static constexpr std::size_t longestText = 1U << 20;

    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

    template <class Number>
    [[nodiscard]] Number number() {
        Number value{};
        const std::string_view part = take(sizeof value);
        if (isComplete_) {
            std::memcpy(&value, part.data(), sizeof value);
        }
        return value;
    }

    [[nodiscard]] std::string_view text() {
        constexpr unsigned bitsEach = 7;
        constexpr unsigned mostBits = 4 * bitsEach; // of the longest text's length
        std::uint64_t length = 0;
        for (unsigned shift = 0;; shift += bitsEach) {
            const auto byte = number<std::uint8_t>();
            length |= static_cast<std::uint64_t>(byte & 0x7FU) << shift;
            isSound_ = isSound_ && length <= longestText && shift < mostBits;
            if (byte < 0x80 || !isSound_) {
                break;
            }
        }
        return isSound_ ? take(static_cast<std::size_t>(length)) : std::string_view();
    }

    [[nodiscard]] bool isComplete() const noexcept { return isComplete_; }
    // False if there was a length that no text has; nothing behind it can be told then.
    [[nodiscard]] bool isSound() const noexcept { return isSound_; }
    [[nodiscard]] std::string_view rest() const noexcept { return bytes_; }

private:
    [[nodiscard]] std::string_view take(std::size_t count) {
        isComplete_ = isComplete_ && count <= bytes_.size();
        const std::string_view part = isComplete_ ? bytes_.substr(0, count) : std::string_view();
        bytes_.remove_prefix(part.size());
        return part;
    }

    std::string_view bytes_;
    bool isComplete_ = true;
    bool isSound_ = true;
};

} // namespace modRowBinary

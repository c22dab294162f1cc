#include "base/sha256.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace {

using Word = std::uint32_t;

constexpr std::size_t blockSize = 64;
// The algorithm's constants: the first bits behind the point of the cube roots, and square roots, of primes.
constexpr std::array<Word, 64> roots{
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};
constexpr std::array<Word, 8> start{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                    0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};

using State = std::array<Word, 8>;

void mix(State& state, std::string_view block) {
    std::array<Word, roots.size()> words{};
    for (std::size_t i = 0; i < blockSize; ++i) {
        words[i / 4] = words[i / 4] << 8 | static_cast<unsigned char>(block[i]);
    }
    for (std::size_t i = 16; i < words.size(); ++i) {
        const Word early = words[i - 15];
        const Word late = words[i - 2];
        words[i] = words[i - 16] + (std::rotr(early, 7) ^ std::rotr(early, 18) ^ early >> 3) + words[i - 7] +
                   (std::rotr(late, 17) ^ std::rotr(late, 19) ^ late >> 10);
    }
    auto [a, b, c, d, e, f, g, h] = state;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const Word first = h + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) +
                           ((e & f) ^ (~e & g)) + roots[i] + words[i];
        const Word second =
            (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
        h = g;
        g = f;
        f = e;
        e = d + first;
        d = c;
        c = b;
        b = a;
        a = first + second;
    }
    const State mixed{a, b, c, d, e, f, g, h};
    for (std::size_t i = 0; i < state.size(); ++i) {
        state[i] += mixed[i];
    }
}

std::string digestOf(std::string_view bytes) {
    std::string padded(bytes);
    padded += '\x80';
    while (padded.size() % blockSize != blockSize - 8) {
        padded += '\0';
    }
    const std::uint64_t bits = std::uint64_t{bytes.size()} * 8;
    for (int shift = 56; shift >= 0; shift -= 8) {
        padded += static_cast<char>(bits >> shift & 0xFF);
    }
    State state = start;
    for (std::string_view rest = padded; !rest.empty(); rest.remove_prefix(blockSize)) {
        mix(state, rest.substr(0, blockSize));
    }
    std::string digest;
    for (const Word word : state) {
        for (int shift = 24; shift >= 0; shift -= 8) {
            digest += static_cast<char>(word >> shift & 0xFF);
        }
    }
    return digest;
}

} // namespace

std::string modHash::sha256Base64(std::string_view bytes) {
    constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const std::string digest = digestOf(bytes);
    std::string result;
    for (std::size_t i = 0; i < digest.size(); i += 3) {
        const auto byteAt = [&](std::size_t at) -> unsigned {
            return at < digest.size() ? static_cast<unsigned char>(digest[at]) : 0U;
        };
        const unsigned three = byteAt(i) << 16 | byteAt(i + 1) << 8 | byteAt(i + 2);
        for (int shift = 18; shift >= 0; shift -= 6) {
            result += letters[three >> shift & 0x3F];
        }
    }
    constexpr std::size_t filled = 1; // 32 bytes leave one of a group of three open
    result.replace(result.size() - filled, filled, "=");
    return result;
}

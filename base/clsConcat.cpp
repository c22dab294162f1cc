#include "base/clsConcat.h"

#include <algorithm>
#include <limits>

#include "platform/runtimeError.h"
#include "platform/text.h"

namespace {

constexpr std::size_t growthStep = 15000;

std::u32string decoded(std::string_view text) {
    std::u32string result;
    result.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const char32_t codePoint = platform::decodeCodePoint(text, position);
        result.push_back(codePoint == platform::invalidCodePoint ? U'\uFFFD' : codePoint);
    }
    return result;
}

} // namespace

void clsConcat::ReInit() {
    buffer_.clear();
    used_ = 0;
}

std::string clsConcat::GetString() const {
    std::string result;
    for (const char32_t codePoint : std::u32string_view(buffer_).substr(0, static_cast<std::size_t>(used_))) {
        platform::appendCodePoint(result, codePoint);
    }
    return result;
}

void clsConcat::SetString(std::string_view text) {
    buffer_ = decoded(text);
    buffer_.append(growthStep, U'\0');
}

void clsConcat::SConcat(std::string_view text) {
    const std::u32string piece = decoded(text);
    const auto used = static_cast<std::size_t>(used_);
    if (piece.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()) - used) {
        throw RuntimeError(errorNumber::overflow);
    }
    if (used + piece.size() >= buffer_.size()) {
        // Odd on purpose: the piece is compared with the used length, not with the growth step.
        buffer_.append(piece.size() <= used ? growthStep : piece.size(), U'\0');
    }
    if (used < buffer_.size()) {
        const std::size_t fitting = std::min(piece.size(), buffer_.size() - used);
        std::copy_n(piece.begin(), fitting, buffer_.begin() + used_);
    }
    used_ = static_cast<std::int32_t>(used + piece.size());
}

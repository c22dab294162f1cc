#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "platform/runtimeError.h"
#include "platform/text.h"

// A property that holds for every input; otherwise the process ends, and libFuzzer keeps the input as a
// finding.
inline void require(bool holds, const char* property, const char* details = "") {
    if (!holds) {
        std::fprintf(stderr, "== does not hold: %s\n%s\n", property, details);
        std::abort();
    }
}

[[nodiscard]] inline bool isUtf8(std::string_view text) {
    for (std::size_t position = 0; position < text.size();) {
        if (platform::decodeCodePoint(text, position) == platform::invalidCodePoint) {
            return false;
        }
    }
    return true;
}

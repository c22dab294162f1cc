#pragma once

#include <string>
#include <string_view>

namespace modHash {

// The SHA-256 digest of the bytes, in base 64: the form in which a page names the scripts and styles that it
// allows.
[[nodiscard]] std::string sha256Base64(std::string_view bytes);

} // namespace modHash

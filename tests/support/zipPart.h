#pragma once

#include <string>
#include <string_view>

// The content of one file in a ZIP archive that is at hand as bytes; empty when it is not in there or
// damaged.
[[nodiscard]] std::string zipPart(std::string_view archive, std::string_view name);

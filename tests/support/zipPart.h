#pragma once

#include <string>
#include <string_view>

// The content of one file in a ZIP archive given as bytes; empty if the file is missing or damaged.
[[nodiscard]] std::string zipPart(std::string_view archive, std::string_view name);

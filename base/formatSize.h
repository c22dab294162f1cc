#pragma once

#include <string>

namespace modLvw {

// A size in bytes for people: "1,023 bytes", "1.5 Kb", "12.0 Mb", "5.0 Gb", with the user's separators. The
// unit is chosen before rounding, so a size just below a boundary reads "1,024.0 Kb". Not a number gives an
// empty text.
void appendSize(std::string& result, double bytes);
[[nodiscard]] std::string formatSize(double bytes);

} // namespace modLvw

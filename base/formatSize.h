#pragma once

#include <string>

namespace modLvw {

// The size, or the nearest that a scan can have: not a number gives 0, and no sum of a scan's sizes is beyond
// 2^96. What computes shares and widths from sizes needs no other care then.
[[nodiscard]] double soundSize(double bytes);

// A size in bytes for people: "1,023 bytes", "1.5 Kb", "12.0 Mb", "5.0 Gb", with the user's separators. The
// unit is chosen before rounding, so a size just below a boundary reads "1,024.0 Kb". Not a number gives an
// empty text; a size that is none (soundSize) reads as the greatest that is.
void appendSize(std::string& result, double bytes);
[[nodiscard]] std::string formatSize(double bytes);
// "+1.5 Kb", "-3 bytes", "0 bytes".
[[nodiscard]] std::string formatChange(double bytes);

} // namespace modLvw

#pragma once

#include <string>
#include <string_view>

namespace modChartTip {

// The size part of a chart tip: "1.50Gb", "12.3Mb" or "512.0Kb". Odd on purpose: with a decimal comma in the
// regional settings, the decimals of the value are lost first, so 1.5 megabytes read "1,0Mb".
[[nodiscard]] std::string sizePart(double megabytes);

// Writes the text of a chart tip: "12.3Mb, 40 files, 1 folder". The counts are those directly in the folder
// at this moment; without such a folder there is only the size part, and if it cannot be read, "(Access
// Denied)". `folder` is the selected folder's internal path followed directly by the label under the pointer;
// empty if there is no label. If an error is thrown, the text has what was written so far.
void format(std::string& text, double megabytes, std::string_view folder);

} // namespace modChartTip

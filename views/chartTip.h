#pragma once

#include <string>
#include <string_view>

namespace modChartTip {

// The size part of a chart tip: "1.50Gb", "12.3Mb" or "512.0Kb". Under a regional setting with decimal comma
// the decimals of the value are lost first, deliberately: 1.5 megabytes read "1,0Mb".
[[nodiscard]] std::string sizePart(double megabytes);

// Makes the text of a chart tip: "12.3Mb, 40 files, 1 folder", counted in the folder as it is now, not below
// it; the size part alone when there is no such folder; "(Access Denied)" when it cannot be read. `folder` is
// the selected folder's internal path followed directly by the label under the pointer; empty when there is
// no label. Errors are thrown; the text then is what had been made of it.
void format(std::string& text, double megabytes, std::string_view folder);

} // namespace modChartTip

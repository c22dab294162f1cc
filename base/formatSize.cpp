#include "base/formatSize.h"

#include <algorithm>
#include <cmath>

#include "base/numberFormat.h"

namespace modLvw {

double soundSize(double bytes) {
    constexpr double greatest = 0x1p96;
    return std::isnan(bytes) ? 0 : std::clamp(bytes, -greatest, greatest);
}

void appendSize(std::string& result, double bytes) {
    if (std::isnan(bytes)) {
        return;
    }
    bytes = soundSize(bytes);
    constexpr double kilobyte = 1024;
    constexpr double megabyte = 1048576;
    constexpr double gigabyte = 1073741824;
    if (bytes < kilobyte) {
        modFormat::appendFormattedNumber(result, bytes, "#,##0 bytes");
    } else if (bytes < megabyte) {
        modFormat::appendFormattedNumber(result, bytes / 1024, "###,###,###.0 Kb");
    } else if (bytes < gigabyte) {
        modFormat::appendFormattedNumber(result, bytes / 1024 / 1024, "###,###,###.0 Mb");
    } else {
        modFormat::appendFormattedNumber(result, bytes / 1024 / 1024 / 1024, "###,###,###.0 Gb");
    }
}

std::string formatChange(double bytes) {
    return (bytes > 0 ? "+" : bytes < 0 ? "-" : "") + formatSize(std::abs(bytes));
}

std::string formatSize(double bytes) {
    std::string result;
    appendSize(result, bytes);
    return result;
}

} // namespace modLvw

#pragma once

#include <string>
#include <vector>

#include "platform/clock.h"

// The labels of axes for sizes and for time.
namespace modTimeChart {

struct SizeLabel {
    double size = 0;
    std::string text; // as sizes are shown everywhere: "512.0 Mb"
};

// At most `most` (at least 2) from 0 up, at even steps that can be told from their texts; the last is the
// greatest or more.
[[nodiscard]] std::vector<SizeLabel> sizeLabels(double greatest, int most);

struct TimeLabel {
    platform::Seconds moment = 0;
    std::string text; // "01/31/2026"; within a day "06:00 PM"
};

// The beginnings of hours, days, months or years of local time, at most `most`; at least one if a day begins
// between the two.
[[nodiscard]] std::vector<TimeLabel> timeLabels(platform::Seconds from, platform::Seconds to, int most);

} // namespace modTimeChart

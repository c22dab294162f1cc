#include "views/chartAxis.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/formatSize.h"
#include "base/numberFormat.h"

namespace {

constexpr std::string_view valuePicture = "#,##0.###Mb";
constexpr double finest = 0.001; // the last digit that a label shows

// The smallest round step that is not below `wanted`.
double roundStep(double wanted) {
    constexpr std::array<double, 4> mantissas{1, 2, 2.5, 5};
    for (int exponent = std::max(-3, static_cast<int>(std::floor(std::log10(wanted))));; ++exponent) {
        const double power = std::pow(10, std::abs(exponent));
        for (const double mantissa : mantissas) {
            // Two and a half thousandths cannot be shown in a label.
            const bool shown = exponent > -3 || mantissa != 2.5;
            const double step = exponent < 0 ? mantissa / power : mantissa * power;
            if (shown && step >= wanted) {
                return step;
            }
        }
    }
}

} // namespace

ChartAxis chartAxis(double least, double greatest, int mostSteps) {
    const double range = greatest - least;
    if (!std::isfinite(range) || range <= 0) {
        return {};
    }
    ChartAxis axis;
    // Bounds on a step keep their label even if rounding makes their quotient slightly too small.
    constexpr double slack = 1e-9;
    axis.step = roundStep(std::max(range / std::max(mostSteps, 1) * (1 - slack), finest));
    axis.first = static_cast<int>(std::ceil(least / axis.step - slack));
    axis.last = static_cast<int>(std::floor(greatest / axis.step + slack));
    return axis;
}

std::string chartAxisText(double megabytes) {
    return modFormat::formatNumber(megabytes, valuePicture);
}

std::string chartMarkText(double megabytes) {
    const bool tooSmall = megabytes > 0 && megabytes < finest / 2;
    return tooSmall ? "<" + chartAxisText(finest) : chartAxisText(megabytes);
}

std::string chartValueText(double megabytes, ChartValues values) {
    return values == ChartValues::sizes ? chartMarkText(megabytes)
                                        : modLvw::formatChange(megabytes * 1024 * 1024);
}

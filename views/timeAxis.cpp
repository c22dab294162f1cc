#include "views/timeAxis.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "base/dateFormat.h"
#include "base/formatSize.h"

namespace modTimeChart {

namespace {

using platform::LocalTime;
using platform::localTime;
using platform::Seconds;

constexpr double kilo = 1024;
constexpr Seconds minute = 60;
constexpr Seconds hour = 60 * minute;
constexpr Seconds day = 24 * hour;

// The smallest step of 1, 2 or 5 times a power of ten of the unit in which the greatest is shown, or half the
// unit. A text has one digit behind the point.
double sizeStep(double greatest, double wanted) {
    double unit = 1;
    for (int i = 0; i < 3 && greatest >= unit * kilo; ++i) {
        unit *= kilo;
    }
    if (unit > 1 && wanted <= unit / 2) {
        return unit / 2;
    }
    for (double power = unit;; power *= 10) {
        for (const double mantissa : {1.0, 2.0, 5.0}) {
            if (mantissa * power >= wanted) {
                return mantissa * power;
            }
        }
    }
}

// A step between labels: so many hours, days or months.
struct TimeStep {
    int hours = 0;
    int days = 0;
    int months = 0;

    [[nodiscard]] Seconds length() const { // the least
        constexpr int daysInMonth = 28;
        return hours * hour + (days + months * daysInMonth) * day;
    }
};

constexpr std::array<TimeStep, 22> timeSteps{{
    {1, 0, 0},     {3, 0, 0},     {6, 0, 0},     {12, 0, 0},     {0, 1, 0},   {0, 2, 0},
    {0, 7, 0},     {0, 14, 0},    {0, 0, 1},     {0, 0, 2},      {0, 0, 3},   {0, 0, 6},
    {0, 0, 12},    {0, 0, 24},    {0, 0, 60},    {0, 0, 120},    {0, 0, 240}, {0, 0, 600},
    {0, 0, 1'200}, {0, 0, 2'400}, {0, 0, 6'000}, {0, 0, 12'000},
}};

// The beginning of the local day that is nearest; clocks may have been changed in between.
Seconds midnightNear(Seconds moment) {
    constexpr int noon = 12;
    for (int i = 0; i < 2; ++i) {
        const LocalTime time = localTime(moment);
        moment -= time.hour * hour + time.minute * minute + time.second;
        moment += time.hour >= noon ? day : 0;
    }
    return moment;
}

Seconds monthBefore(Seconds moment) {
    return midnightNear(moment - (localTime(moment).day - 1) * day - localTime(moment).hour * hour);
}

// How many months it is from the year 0 to the moment.
long long monthsOf(Seconds moment) {
    const LocalTime time = localTime(moment);
    return time.year * 12 + time.month - 1;
}

Seconds firstMidnight(Seconds from) {
    const Seconds near = midnightNear(from);
    return near < from ? midnightNear(near + day) : near;
}

Seconds begin(Seconds from, const TimeStep& step) {
    const LocalTime time = localTime(from);
    const Seconds today = from - time.hour * hour - time.minute * minute - time.second;
    return step.months > 0 ? monthBefore(from) : step.days > 0 ? firstMidnight(from) : today;
}

// The next day or month: an hour more or less does not matter, as midnight is looked for. Of years, it may be
// a month before.
Seconds next(Seconds moment, const TimeStep& step) {
    constexpr int moreThanAMonth = 32;
    constexpr int year = 12;
    if (step.hours > 0) {
        return moment + step.hours * hour;
    }
    if (step.days > 0) {
        return midnightNear(moment + step.days * day);
    }
    const bool isLong = step.months >= year && monthsOf(moment) % step.months == 0;
    return monthBefore(moment + (isLong ? step.months * 30 - 40 : moreThanAMonth) * day + hour);
}

std::string textOf(Seconds moment, const TimeStep& step) {
    const LocalTime time = localTime(moment);
    const bool isMidnight = time.hour == 0 && time.minute == 0;
    return modFormat::formatDate(time, step.hours > 0 && !isMidnight ? "hh:nn AMPM" : "mm/dd/yyyy");
}

} // namespace

std::vector<SizeLabel> sizeLabels(double greatest, int most) {
    constexpr double slack = 1e-9;
    const double top = std::max(modLvw::soundSize(greatest), 1.0);
    const int steps = std::max(most, 2) - 1;
    const double step = sizeStep(top, top / steps * (1 - slack));
    std::vector<SizeLabel> result;
    for (int i = 0; i <= steps; ++i) {
        result.push_back({i * step, modLvw::formatSize(i * step)});
        if (i * step >= top * (1 - slack)) {
            break;
        }
    }
    return result;
}

std::vector<TimeLabel> timeLabels(Seconds from, Seconds to, int most) {
    std::vector<TimeLabel> result;
    const auto* const step = std::find_if(timeSteps.begin(), timeSteps.end(), [&](const TimeStep& each) {
        return (to - from) / each.length() < std::max(most, 1);
    });
    if (step == timeSteps.end() || to <= from) {
        return result;
    }
    for (Seconds moment = begin(from, *step); moment <= to;) {
        const bool isMeant = step->months == 0 || monthsOf(moment) % step->months == 0;
        if (moment >= from && isMeant) {
            result.push_back({moment, textOf(moment, *step)});
        }
        const Seconds following = next(moment, *step);
        if (following <= moment) { // the system cannot express it
            break;
        }
        moment = following;
    }
    if (const Seconds midnight = firstMidnight(from); result.empty() && midnight <= to) {
        result.push_back({midnight, textOf(midnight, {0, 1, 0})});
    }
    return result;
}

} // namespace modTimeChart

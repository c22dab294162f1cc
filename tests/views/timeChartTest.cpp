#include "views/timeChart.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "platform/clock.h"
#include "views/timeAxis.h"

namespace {

using modTimeChart::Direction;
using modTimeChart::Line;
using modTimeChart::Place;
using modTimeChart::TimeChart;
using testing::SizeIs;

constexpr platform::Seconds day = 86400;
constexpr platform::Seconds start = 1'767'268'800; // 2026-01-01 12:00 UTC

Line line(const char* name, const std::vector<std::pair<int, double>>& points) {
    Line result{name, 0, 0, {}, true};
    for (const auto& [days, size] : points) {
        result.points.push_back({start + days * day, size, true, true, 0});
    }
    return result;
}

TimeChart threeLines() {
    return TimeChart({line("all", {{0, 90}, {10, 60}, {20, 100}}),
                      line("half", {{0, 50}, {10, 60}, {20, 50}}), line("new", {{10, 5}, {19, 40}})});
}

TEST(TimeChart, spansWhatIsShown) {
    TimeChart chart = threeLines();
    EXPECT_LT(chart.from(), start);
    EXPECT_GT(chart.to(), start + 20 * day);
    EXPECT_EQ(chart.greatest(), 100);
    EXPECT_EQ(chart.position({0, 2}).y, 1);
    chart.setShown(0, false);
    chart.setShown(1, false);
    EXPECT_GT(chart.from(), start + 9 * day);
    EXPECT_EQ(chart.greatest(), 40);
    chart.fit(3);
    EXPECT_EQ(chart.greatest(), 40);
    chart.fit(2);
    EXPECT_EQ(chart.greatest(), 50);
    chart.setShown(2, false);
    EXPECT_EQ(chart.greatest(), 100) << "of all lines, while none is shown";
    EXPECT_EQ(chart.count(), 0U);
}

TEST(TimeChart, drawsOnePointInTheMiddleAndBearsAnyValue) {
    const TimeChart one({line("one", {{0, 0}})});
    EXPECT_DOUBLE_EQ(one.position({0, 0}).x, 0.5);
    EXPECT_EQ(one.position({0, 0}).y, 0);
    EXPECT_EQ(TimeChart().nearest({0, 0}, 100, 100, 1000), std::nullopt);

    const TimeChart strange(
        {{"strange", 0, 0, {{INT64_MIN, -5, true, true, 0}, {INT64_MAX, 0x1p96, true, true, 1}}, true}});
    EXPECT_GE(strange.position({0, 0}).x, 0);
    EXPECT_LE(strange.position({0, 1}).x, 1);
    EXPECT_EQ(strange.position({0, 0}).y, 0);
    EXPECT_FALSE(modTimeChart::timeLabels(strange.from(), strange.to(), 12).empty());
    EXPECT_THAT(modTimeChart::sizeLabels(strange.greatest(), 5), SizeIs(testing::Le(5U)));
}

TEST(TimeChart, findsTheNearestPointThatIsShown) {
    TimeChart chart = threeLines();
    const auto near = [&](Place place, double dx, double dy) {
        const modTimeChart::Position position = chart.position(place);
        return chart.nearest({position.x + dx / 500, position.y + dy / 100}, 500, 100, 10);
    };
    EXPECT_EQ(near({0, 2}, 3, -3), (Place{0, 2}));
    EXPECT_EQ(near({0, 2}, 9, 9), std::nullopt);
    EXPECT_EQ(near({1, 1}, 0, 0), (Place{0, 1})) << "the first of two at one place";
    chart.setShown(0, false);
    EXPECT_EQ(near({1, 1}, 0, 0), (Place{1, 1}));
    EXPECT_EQ(near({0, 2}, 0, 0), std::nullopt);
}

TEST(TimeChart, isWalkedThroughByArrowKeys) {
    TimeChart chart = threeLines();
    const struct {
        std::optional<Place> from;
        Direction direction;
        Place to;
    } cases[] = {
        {std::nullopt, Direction::earlier, {0, 2}}, {Place{0, 2}, Direction::later, {0, 2}},
        {Place{0, 2}, Direction::earlier, {0, 1}},  {Place{0, 0}, Direction::earlier, {0, 0}},
        {Place{1, 2}, Direction::first, {1, 0}},    {Place{1, 0}, Direction::last, {1, 2}},
        {Place{0, 2}, Direction::smaller, {1, 2}},  {Place{1, 2}, Direction::smaller, {2, 1}},
        {Place{2, 1}, Direction::smaller, {2, 1}},  {Place{2, 1}, Direction::larger, {1, 2}},
        {Place{0, 1}, Direction::smaller, {1, 1}}, // of one size
        {Place{1, 1}, Direction::larger, {0, 1}},   {Place{1, 1}, Direction::smaller, {2, 0}},
        {Place{0, 1}, Direction::larger, {0, 1}},   {Place{7, 1}, Direction::larger, {0, 2}},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        EXPECT_EQ(chart.moved(cases[i].from, cases[i].direction), cases[i].to) << i;
    }
    chart.setShown(1, false);
    EXPECT_EQ(chart.moved(Place{0, 2}, Direction::smaller), (Place{2, 1}));
    for (std::size_t number = 0; number < chart.count(); ++number) {
        EXPECT_EQ(chart.numberOf(chart.placeOf(number)), number);
    }
    EXPECT_EQ(chart.placeOf(3), (Place{2, 0}));
}

TEST(TimeAxis, labelsSizesAsTheyAreShownEverywhere) {
    constexpr double mega = 1024 * 1024;
    const struct {
        double greatest;
        int most;
        std::vector<std::string> texts;
    } cases[] = {
        {0, 5, {"0 bytes", "1 bytes"}},
        {7, 5, {"0 bytes", "2 bytes", "4 bytes", "6 bytes", "8 bytes"}},
        {1000, 3, {"0 bytes", "500 bytes", "1,000 bytes"}},
        {1.2 * mega, 8, {"0 bytes", "512.0 Kb", "1.0 Mb", "1.5 Mb"}},
        {37 * mega, 5, {"0 bytes", "10.0 Mb", "20.0 Mb", "30.0 Mb", "40.0 Mb"}},
        {1000 * 1024 * mega, 2, {"0 bytes", "1,000.0 Gb"}},
    };
    for (const auto& each : cases) {
        std::vector<std::string> texts;
        for (const modTimeChart::SizeLabel& label : modTimeChart::sizeLabels(each.greatest, each.most)) {
            texts.push_back(label.text);
        }
        EXPECT_EQ(texts, each.texts) << each.greatest;
    }
}

// In whatever time zone.
TEST(TimeAxis, labelsBeginningsOfDaysMonthsAndYears) {
    for (const int days : {1, 2, 9, 40, 100, 365, 800, 4000, 40'000}) {
        for (const int most : {1, 3, 8}) {
            const auto labels = modTimeChart::timeLabels(start, start + days * day, most);
            EXPECT_LE(static_cast<int>(labels.size()), most) << days;
            EXPECT_FALSE(labels.empty()) << days;
            for (std::size_t i = 0; i < labels.size(); ++i) {
                const platform::LocalTime time = platform::localTime(labels[i].moment);
                EXPECT_EQ(time.minute, 0);
                EXPECT_TRUE(days / most < 2 || time.hour <= 1)
                    << days << " in " << most << ": " << labels[i].text;
                EXPECT_TRUE(days / most < 40 || time.day == 1 || labels.size() == 1)
                    << days << " in " << most << ": " << labels[i].text;
                EXPECT_TRUE(i == 0 || labels[i - 1].moment < labels[i].moment);
                EXPECT_TRUE(i == 0 || labels[i - 1].text != labels[i].text) << labels[i].text;
            }
        }
    }
    EXPECT_TRUE(modTimeChart::timeLabels(start, start, 5).empty());
}

} // namespace

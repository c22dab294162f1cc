#include "app/pictures.h"

#include <gtest/gtest.h>

#include <limits>

using platform::LocalTime;

TEST(Pictures, DatesFollowTheLetters) {
    const LocalTime evening{2004, 3, 14, 21, 5, 7};
    struct Case {
        LocalTime time;
        const char* picture;
        const char* expected;
    };
    for (const Case& c : {Case{evening, "mm/dd/yyyy hh:nn:ss AMPM", "03/14/2004 09:05:07 PM"},
                          Case{evening, "mm/dd/yy hh:nn AMPM", "03/14/04 09:05 PM"},
                          Case{evening, "mm-dd-yyyy-hh-nn-ss", "03-14-2004-21-05-07"},
                          Case{{2000, 12, 1, 0, 0, 0}, "yy hh:nn AMPM", "00 12:00 AM"},
                          Case{{2000, 12, 1, 12, 0, 0}, "hh AMPM, A?", "12 PM, A?"},
                          Case{{12026, 1, 2, 3, 4, 5}, "yyyy yy", "12026 26"}}) {
        EXPECT_EQ(modFormat::formatDate(c.time, c.picture), c.expected) << c.picture;
    }
}

TEST(Pictures, StoredDatesAreReadBackAndNothingElseIs) {
    for (int hour = 0; hour < 24; ++hour) {
        const LocalTime time{2024, 2, 29, hour, 59, 58};
        EXPECT_EQ(modFormat::parseDate(modFormat::formatDate(time, modFormat::storedDatePicture)), time)
            << hour;
    }
    for (const char* text : {"", "03/14/2004", "02/30/2004 09:05:07 PM", "02/29/2023 09:05:07 PM",
                             "13/01/2004 09:05:07 PM", "00/00/0000 12:00:00 AM", "03/14/2004 00:05:07 PM",
                             "03/14/2004 13:05:07 PM", "03/14/2004 09:60:07 PM", "03/14/2004 09:05:07 XM",
                             "03-14-2004 09:05:07 PM", "03/14/2004 09:05:07 PM "}) {
        EXPECT_FALSE(modFormat::parseDate(text)) << text;
        std::string shown = "<";
        modFormat::appendReformattedDate(shown, text, modFormat::reportDatePicture);
        EXPECT_EQ(shown, "<" + std::string(text));
    }
    std::string shown = "<";
    modFormat::appendReformattedDate(shown, "03/14/2004 12:05:07 AM", modFormat::reportDatePicture);
    EXPECT_EQ(shown, "<03/14/04 12:05 AM");
}

TEST(Pictures, NumbersFollowTheDigits) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    struct Case {
        double number;
        const char* picture;
        const char* expected;
    };
    for (const Case& c : {
             Case{0, "#,##0", "0"},
             Case{0, "###,###,###.0", ".0"},
             Case{999, "#,##0", "999"},
             Case{1234567, "#,##0", "1,234,567"},
             Case{1234567890123, "###,###,###.0", "1,234,567,890,123.0"},
             Case{1234567, "0", "1234567"},
             Case{0.5, "0", "1"},
             Case{2.5, "0", "3"},
             Case{-2.5, "0", "-3"},
             Case{-0.04, "0.0", "0.0"},
             Case{1.005, "0.00", "1.01"},
             Case{0.149, "0.0", "0.1"},
             Case{9.96, "0.0", "10.0"},
             Case{999.95, "#,##0.0", "1,000.0"},
             Case{0.999, "#.00", "1.00"},
             Case{1.5, "0.000", "1.500"},
             Case{1.5, "#,##0.###Mb", "1.5Mb"},
             Case{2, "#,##0.###Mb", "2Mb"},
             Case{1.00049, "#,##0.###Mb", "1Mb"},
             Case{1.5, "0.00Gb", "1.50Gb"},
             Case{42, "0000000000000000000", "0000000000000000042"},
             Case{9223372036854775808.0, "0000000000000000000", "9223372036854775808"},
             Case{5, "0,000", "0,005"},
             Case{std::numeric_limits<double>::denorm_min(), "0.0", "0.0"},
             Case{std::numeric_limits<double>::quiet_NaN(), "0.0", ""},
             Case{-infinity, "0.0", "-inf"},
         }) {
        EXPECT_EQ(modFormat::formatNumber(c.number, c.picture), c.expected) << c.number << ' ' << c.picture;
    }
    EXPECT_EQ(modFormat::formatNumber(std::numeric_limits<double>::max(), "0").size(), 309U);
}

#include "base/dateFormat.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <utility>

using platform::LocalTime;

TEST(DateFormat, datesFollowTheLetters) {
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

TEST(DateFormat, storedDatesAreReadBackAndNothingElseIs) {
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

TEST(DateFormat, momentsAreReadBackFromTheirTexts) {
    const std::pair<platform::Seconds, const char*> moments[] = {{0, "1970-01-01 00:00:00"},
                                                                 {-1, "1969-12-31 23:59:59"},
                                                                 {1'709'251'199, "2024-02-29 23:59:59"},
                                                                 {253'402'300'799, "9999-12-31 23:59:59"}};
    for (const auto& [moment, text] : moments) {
        EXPECT_EQ(modFormat::utcText(moment), text);
        EXPECT_EQ(modFormat::parseUtc(text), moment) << text;
    }
    for (const char* text :
         {"", "2024-02-29", "2023-02-29 10:00:00", "2024-13-01 10:00:00", "2024-01-01 24:00:00",
          "2024-01-01 10:60:00", "2024-01-01T10:00:00", "2024-01-01 10:00:00Z"}) {
        EXPECT_FALSE(modFormat::parseUtc(text)) << text;
    }
}

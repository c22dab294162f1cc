#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/clock.h"

// Formats times as local-time texts in the stored form. Each second is formatted only once while it is
// remembered, because the files of a tree have far fewer different times than there are files.
class DateTexts {
public:
    // Valid until the next call. Empty for a time beyond the calendar.
    [[nodiscard]] std::string_view of(platform::Seconds moment);

private:
    struct Entry {
        platform::Seconds moment = 0;
        std::string text;
        bool filled = false;
    };
    static constexpr std::size_t remembered = 1024; // a power of two
    std::array<Entry, remembered> entries_;
};

#include "scan/dateTexts.h"

#include "base/dateFormat.h"

std::string_view DateTexts::of(platform::Seconds moment) {
    Entry& entry = entries_[static_cast<std::size_t>(moment) & (remembered - 1)];
    if (!entry.filled || entry.moment != moment) {
        entry.text.clear();
        const platform::LocalTime time = platform::localTime(moment);
        if (time != platform::LocalTime()) {
            modFormat::appendFormattedDate(entry.text, time, modFormat::storedDatePicture);
        }
        entry.moment = moment;
        entry.filled = true;
    }
    return entry.text;
}

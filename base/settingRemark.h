#pragma once

#include <string>
#include <string_view>

#include "base/settingsTable.h"
#include "platform/runtimeError.h"

namespace modSettings {

// What there is to say about the text of a setting.
struct Remark {
    // note: it works, perhaps otherwise than expected; warning: something else is used in its place; error:
    // what it is for would fail, so it is not to be stored.
    enum class Weight { none, note, warning, error };
    Weight weight = Weight::none;
    std::string text; // sentences

    // Adds sentences; the greater weight counts.
    void add(Weight added, std::string_view sentence);
    // Adds what the error says.
    void add(const RuntimeError& error);
};

// About a text for the key, as a person types it or as settings.ini has it: its form, its length, and of a
// path, whether a file of that name could be written. Says when the text is the name of an environment
// variable; the rest is then about the variable's value. Whether a file is a working database is not looked
// at (modDatabase::remarkOn). Volumes that may never answer are not asked.
[[nodiscard]] Remark remarkOn(const Key& key, std::string_view text);

} // namespace modSettings

#pragma once

#include <string>
#include <string_view>

#include "base/settingRemark.h"

class clsRegSettings;

// Section [Excludes] of the INI file as people edit it: a text with a pattern a line, each as the file has it
// (see modExcludes::toStored). The names of its keys are not shown.
namespace modExcludes {

// The patterns in their order. A key without one is not among them.
[[nodiscard]] std::string lines(const clsRegSettings& store);

// What there is to say about lines that somebody types, and about those that the file has.
[[nodiscard]] modSettings::Remark remarkOnLines(std::string_view text);
[[nodiscard]] modSettings::Remark remarkOnFile(const clsRegSettings& store);

// Stores what was changed between two texts; their order means nothing. A line that was changed keeps its
// key, and all that is in neither text stays, as what others have stored meanwhile. Returns whether the file
// holds it then; if not, it may hold part of it, and the same call completes that.
[[nodiscard]] bool saveLines(const clsRegSettings& store, std::string_view before, std::string_view after);

} // namespace modExcludes

#pragma once

#include <string_view>

#include "base/settingRemark.h"

namespace modDatabase {

// Adds what prepareDatabase would do with the file that the setting databasePath names (a path as typed, or
// an environment variable), unless the remark is an error already. Reads the file's first bytes only, so a
// program that uses it is not disturbed.
void addRemark(modSettings::Remark& remark, std::string_view text, std::string_view applicationFolder);

} // namespace modDatabase

#pragma once

#include <string_view>

#include "base/errorLog.h"

class clsRegSettings;

namespace modGlobal {

// The error log's files as named in the settings; by default, both are errorLog.txt in the application folder
// (an internal path, with or without a trailing "\").
[[nodiscard]] ErrorLogFiles errorLogFiles(const clsRegSettings& settings, std::string_view applicationFolder);

} // namespace modGlobal

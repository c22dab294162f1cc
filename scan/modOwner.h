#pragma once

#include <string>
#include <string_view>

#include "platform/owners.h"

// The owner of a file or folder: domain, "\", account name. Every failure gives "unknown".
namespace modOwner {

// Takes an internal path.
[[nodiscard]] std::string fileOwner(std::string_view path);

} // namespace modOwner

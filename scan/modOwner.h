#pragma once

#include <string>
#include <string_view>

#include "platform/owners.h"

// Who owns a file or folder: the account as domain, "\", name. Every failure gives "unknown".
namespace modOwner {

// By internal path alone.
[[nodiscard]] std::string fileOwner(std::string_view path);

} // namespace modOwner

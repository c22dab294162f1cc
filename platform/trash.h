#pragma once

#include <string_view>

namespace platform {

// Makes the user's own trash folder, if on this system programs have to; `userData` is the internal path of
// the folder that holds the user's data of all programs. Throws RuntimeError if there is none afterwards.
void provideTrash(std::string_view userData);

} // namespace platform

#include "platform/trash.h"

namespace platform {

// The system makes its own.
void provideTrash(std::string_view /*userData*/) {}

} // namespace platform

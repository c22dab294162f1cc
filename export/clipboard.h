#pragma once

#include <string_view>

namespace modExport {

// The system's clipboard, for writing only.
class Clipboard {
public:
    virtual ~Clipboard() = default;

    virtual void clear() = 0;
    virtual void setText(std::string_view text) = 0; // UTF-8
};

} // namespace modExport

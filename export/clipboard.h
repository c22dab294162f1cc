#pragma once

#include <string_view>

namespace modExport {

// The system's clipboard, as far as anything is put on it.
class Clipboard {
public:
    virtual ~Clipboard() = default;

    virtual void clear() = 0;
    virtual void setText(std::string_view text) = 0; // UTF-8
};

} // namespace modExport

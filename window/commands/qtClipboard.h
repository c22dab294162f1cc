#pragma once

#include "export/clipboard.h"

// The desktop's clipboard. Needs an application object.
class QtClipboard final : public modExport::Clipboard {
public:
    void clear() override;
    void setText(std::string_view text) override;
};

#pragma once

#include <string>
#include <string_view>

namespace modExport {

// Puts U+FFFD in the place of everything that an XML document cannot hold: control characters other than
// TAB, LF and CR, U+FFFE, U+FFFF, and each byte that is not valid UTF-8. Most texts hold none and are only
// looked at.
void replaceForbiddenCharacters(std::string& text);

} // namespace modExport

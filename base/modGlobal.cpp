#include "base/modGlobal.h"

std::string modGlobal::addBackslash(std::string_view text) {
    std::string result(text);
    if (!result.empty() && result.back() != '\\') {
        result.push_back('\\');
    }
    return result;
}

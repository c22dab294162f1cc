#include "console/textTable.h"

#include "base/terminalText.h"
#include "platform/paths.h"

namespace {

constexpr std::size_t widestName = 40;

} // namespace

std::string textTable::shown(std::string_view internalName) {
    const std::string name = forTerminal(platform::displayName(internalName));
    const std::string_view cut = platform::firstCharacters(name, widestName);
    return cut.size() == name.size() ? name
                                     : std::string(platform::firstCharacters(name, widestName - 3)) + "...";
}

std::string textTable::padded(const std::string& text, std::size_t width, bool toTheRight) {
    const std::size_t length = platform::characterCount(text);
    const std::string blanks(width > length ? width - length : 0, ' ');
    return toTheRight ? blanks + text : text + blanks;
}

std::size_t textTable::shownRows(std::size_t rows, std::size_t top) {
    return top == 0 ? rows : std::min(rows, top);
}

std::string textTable::moreLine(std::size_t rows, std::size_t top) {
    const std::size_t left = rows - shownRows(rows, top);
    return left == 0 ? std::string() : "  (" + std::to_string(left) + " more)\n";
}

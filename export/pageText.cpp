#include "export/pageText.h"

#include <algorithm>

#include "base/dateFormat.h"
#include "base/formatSize.h"
#include "base/numberFormat.h"
#include "base/terminalText.h"
#include "export/xmlText.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "views/folderSummary.h"

namespace modExport {

namespace {

constexpr std::size_t longestDate = 30;

// The last `count` characters.
std::string_view lastCharacters(std::string_view text, std::size_t count) {
    std::size_t start = text.size();
    for (; count > 0 && start > 0; --count) {
        do {
            --start;
        } while (start > 0 && (static_cast<unsigned char>(text[start]) & 0xC0) == 0x80);
    }
    return text.substr(start);
}

} // namespace

void appendShown(std::string& html, std::string_view text, std::size_t most) {
    std::string shown = forTerminal(text);
    moveForbiddenCharacters(shown, Document::html5);
    if (platform::characterCount(shown) <= most) {
        appendHtmlEntities(html, shown);
        return;
    }
    const std::size_t first = most * 2 / 5; // the end tells more
    appendHtmlEntities(html, platform::firstCharacters(shown, first));
    html.append("\u2026");
    appendHtmlEntities(html, lastCharacters(shown, most - std::min(most, first + 1)));
}

void appendName(std::string& html, std::string_view text, std::size_t most) {
    html.append("<bdi>");
    appendShown(html, text, most);
    html.append("</bdi>");
}

std::string shownPath(std::string_view internalPath) {
    std::string path = platform::displayPath(internalPath);
    const bool isRoot = path.size() == 1 || path.ends_with(":\\");
    if (!isRoot && path.ends_with(platform::displaySeparator)) {
        path.pop_back();
    }
    return path;
}

std::string percentText(double part, double whole) {
    std::string text;
    if (part >= 0 && whole > 0 && part <= whole) {
        appendHtmlEntities(text, modFigures::percentText(part / whole));
    }
    return text;
}

void appendShownOf(std::string& html, std::size_t shown, std::size_t all, std::string_view what) {
    if (shown < all) {
        html.append("<p class=\"note\">")
            .append(modFormat::countText(static_cast<double>(shown)))
            .append(" of ");
        html.append(modFormat::countText(static_cast<double>(all)))
            .append(" ")
            .append(what)
            .append(" shown.</p>\n");
    }
}

void PageTable::begin() {
    html_.append("<table>\n<thead><tr>");
}

void PageTable::header(const Column& column) {
    html_.append(column.isNumber ? "<th scope=\"col\" class=\"r\">" : "<th scope=\"col\">");
    html_.append(column.title).append("</th>");
}

void PageTable::endHeader() {
    html_.append("</tr></thead>\n<tbody>\n");
}

PageTable::~PageTable() {
    html_.append(inRow_ ? "</tr>\n" : "").append("</tbody>\n</table>\n");
}

void PageTable::row() {
    html_.append(inRow_ ? "</tr>\n<tr>" : "<tr>");
    inRow_ = true;
}

void PageTable::path(std::string_view internalPath, std::size_t most) {
    text(shownPath(internalPath), most);
}

void PageTable::text(std::string_view text, std::size_t most) {
    html_.append("<td>");
    appendName(html_, text, most);
    html_.append("</td>");
}

void PageTable::number(std::string_view shown, double value) {
    html_.append("<td class=\"r\" data-v=\"");
    modFormat::appendNumber(html_, value);
    html_.append("\">").append(shown).append("</td>");
}

void PageTable::size(double bytes) {
    number(modLvw::formatSize(bytes), bytes);
}

void PageTable::date(std::string_view stored) {
    html_.append("<td class=\"r d\" data-v=\"");
    const auto time = modFormat::parseDate(stored);
    modFormat::appendNumber(html_, time ? modFormat::momentKey(*time) : -1); // what is no date comes first
    html_.append("\">");
    appendShown(html_, stored, longestDate);
    html_.append("</td>");
}

} // namespace modExport

#include "views/chartTip.h"

#include <charconv>
#include <cstddef>

#include "base/numberFormat.h"
#include "platform/folders.h"

namespace {

// The number at the start of a text, always with "." as the decimal point; 0 if there is none.
double leadingNumber(std::string_view text) {
    double number = 0;
    const std::size_t firstDigit = text.starts_with('-') ? 1 : 0;
    if (text.size() > firstDigit && text[firstDigit] >= '0' && text[firstDigit] <= '9') {
        std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
    }
    return number;
}

std::string counted(std::size_t count, std::string_view noun) {
    return std::to_string(count).append(" ").append(noun).append(count == 1 ? "" : "s");
}

// The label of the bar for a folder's own files cannot occur as a name in an internal path.
bool mayBeFolder(std::string_view path) {
    return !path.empty() && path.find('|') == std::string_view::npos && platform::folderExists(path);
}

} // namespace

std::string modChartTip::sizePart(double megabytes) {
    const double value = leadingNumber(modFormat::formatNumber(megabytes, "0.000"));
    if (value >= 1024) {
        return modFormat::formatNumber(value / 1024, "0.00Gb");
    }
    if (value >= 1) {
        return modFormat::formatNumber(value, "0.0Mb");
    }
    return modFormat::formatNumber(value * 1024, "0.0Kb");
}

void modChartTip::format(std::string& text, double megabytes, std::string_view folder) {
    text = sizePart(megabytes);
    if (!mayBeFolder(folder)) {
        return;
    }
    platform::FolderReader reader;
    platform::FolderListing listing;
    if (!reader.readNames(folder, listing)) {
        if (platform::folderExists(folder)) {
            text = "(Access Denied)";
        }
        return;
    }
    std::size_t folders = 0;
    for (std::size_t i = 0; i < listing.size(); ++i) {
        folders += listing[i].isFolder ? 1 : 0;
    }
    text.append(", ").append(counted(listing.size() - folders, "file"));
    text.append(", ").append(counted(folders, "folder"));
}

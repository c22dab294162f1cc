#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Texts as an HTML page for people shows them. Unlike reports, which give every name whole, such a page may
// cut them.
namespace modExport {

// Appends the text with what would disturb the page in a visible form: control characters, invalid bytes and
// what turns the direction of text as codes ("\012", see forTerminal), and &, <, > and " escaped. Of
// more than `most` characters, some in the middle are left out. At most 6 bytes are appended for each of
// `most`.
void appendShown(std::string& html, std::string_view text, std::size_t most);

// The same as an element that the text around it does not mix with, whatever direction they are written in.
void appendName(std::string& html, std::string_view text, std::size_t most);

// An internal path as it is on the disk; a folder's without its last separator, unless it is a drive's root.
[[nodiscard]] std::string shownPath(std::string_view internalPath);

// "12.3%", "&lt;0.1%"; empty if there is no such share.
[[nodiscard]] std::string percentText(double part, double whole);

// "50 of 1,234 files shown." as a paragraph; nothing if all are.
void appendShownOf(std::string& html, std::size_t shown, std::size_t all, std::string_view what);

// A table that the page's script makes sortable.
class PageTable {
public:
    struct Column {
        std::string_view title;
        bool isNumber = false;
    };
    template <std::size_t count>
    PageTable(std::string& html, const Column (&columns)[count]) : html_(html) { // NOLINT
        begin();
        for (const Column& column : columns) {
            header(column);
        }
        endHeader();
    }
    ~PageTable();
    PageTable(const PageTable&) = delete;
    PageTable& operator=(const PageTable&) = delete;

    void row();
    void path(std::string_view internalPath, std::size_t most);
    void text(std::string_view text, std::size_t most);
    void number(std::string_view shown, double value); // sorted by the value
    void size(double bytes);
    void date(std::string_view stored);

private:
    void begin();
    void header(const Column& column);
    void endHeader();

    std::string& html_;
    bool inRow_ = false;
};

} // namespace modExport

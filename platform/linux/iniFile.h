#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// The text of an INI file as a list of lines. Editing it changes only the lines concerned; all others keep
// their bytes. The encoding is UTF-8, with or without a byte order mark, or UTF-16LE with one, and is kept.
class IniText {
public:
    // Nothing if the bytes are not text: NULs, or invalid UTF-16.
    [[nodiscard]] static std::optional<IniText> fromBytes(std::string_view bytes);
    [[nodiscard]] std::string toBytes() const;

    // The value as written in the line, without surrounding blanks but with its quotes. Nothing if the key is
    // missing or its line has no "=". Bytes that are not valid UTF-8 are read as Latin-1.
    [[nodiscard]] std::optional<std::string> value(std::string_view section, std::string_view key) const;

    // The names of the section's keys that have a value, in their order.
    [[nodiscard]] std::vector<std::string> keys(std::string_view section) const;

    // False if an INI line cannot hold the names or the value.
    [[nodiscard]] bool setValue(std::string_view section, std::string_view key, std::string_view value);

    // False if there is no such key or section.
    bool removeKey(std::string_view section, std::string_view key);
    bool removeSection(std::string_view section);

private:
    enum class Encoding { utf8, utf8WithMark, utf16 };

    // The lines [header, end) of lines_, beginning with the header itself.
    struct Section {
        std::size_t header;
        std::size_t end;
    };

    [[nodiscard]] std::optional<Section> findSection(std::string_view name) const;
    [[nodiscard]] std::optional<std::size_t> findKey(std::string_view section, std::string_view key) const;
    void insertLine(std::size_t position, std::string content);

    Encoding encoding_ = Encoding::utf8;
    std::vector<std::string> lines_; // each including its line end
    std::string_view lineEnd_ = "\r\n";
};

// The text without one pair of matching quotes around it.
[[nodiscard]] std::string_view unquoted(std::string_view text) noexcept;

// Nothing if the file is missing, unreadable, too large or not text.
[[nodiscard]] std::optional<IniText> readIniFile(std::string_view path) noexcept;

// Passes the file's text (empty if the file is missing) to `edit` and writes the result back. False if `edit`
// returns false, or if the file could not be read or written.
bool editIniFile(std::string_view path, const std::function<bool(IniText&)>& edit) noexcept;

} // namespace platform

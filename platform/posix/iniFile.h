#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// The text of an INI file as a list of lines, edited so that every line not concerned keeps its bytes.
// UTF-8 with or without its byte order mark, or UTF-16LE with it; the encoding is kept.
class IniText {
public:
    // Nothing when the bytes are no text: NULs, or UTF-16 that is broken.
    [[nodiscard]] static std::optional<IniText> fromBytes(std::string_view bytes);
    [[nodiscard]] std::string toBytes() const;

    // The value as it stands in the line, blanks around it removed, quotes kept. Nothing when the key is
    // missing or its line has no "=". Bytes that are no UTF-8 are taken for Latin-1.
    [[nodiscard]] std::optional<std::string> value(std::string_view section, std::string_view key) const;

    // False when an INI line cannot hold the names or the value.
    [[nodiscard]] bool setValue(std::string_view section, std::string_view key, std::string_view value);

    // False when there was no such key or section.
    bool removeKey(std::string_view section, std::string_view key);
    bool removeSection(std::string_view section);

private:
    enum class Encoding { utf8, utf8WithMark, utf16 };

    // Lines [header, end) of lines_; the header's own line comes first.
    struct Section {
        std::size_t header;
        std::size_t end;
    };

    [[nodiscard]] std::optional<Section> findSection(std::string_view name) const;
    [[nodiscard]] std::optional<std::size_t> findKey(std::string_view section, std::string_view key) const;
    void insertLine(std::size_t position, std::string content);

    Encoding encoding_ = Encoding::utf8;
    std::vector<std::string> lines_; // each with its line end
    std::string_view lineEnd_ = "\r\n";
};

// Without one pair of matching quotes around it.
[[nodiscard]] std::string_view unquoted(std::string_view text) noexcept;

// Nothing when the file is missing, cannot be read, is too large or no text.
[[nodiscard]] std::optional<IniText> readIniFile(std::string_view path) noexcept;

// Hands the file's text (empty for a missing file) to `edit` and writes the outcome back. False when `edit`
// reports false, and when the file could not be read or written.
bool editIniFile(std::string_view path, const std::function<bool(IniText&)>& edit) noexcept;

} // namespace platform

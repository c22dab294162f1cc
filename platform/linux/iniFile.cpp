#include "platform/linux/iniFile.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>

#include "platform/files.h"
#include "platform/linux/opening.h"
#include "platform/paths.h"
#include "platform/runtimeError.h"
#include "platform/text.h"

namespace platform {

namespace {

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view utf16Mark = "\xFF\xFE";
constexpr std::string_view blanks = " \t";

// Larger files are not settings files and are left alone.
constexpr std::uint64_t largestFile = 1U << 20;

struct Line {
    enum class Kind { blank, other, header, key };
    Kind kind = Kind::other;
    std::string_view name;
    std::optional<std::string_view> value;
};

std::string_view withoutLineEnd(std::string_view line) {
    for (const char c : {'\n', '\r'}) {
        if (line.ends_with(c)) {
            line.remove_suffix(1);
        }
    }
    return line;
}

Line parsed(std::string_view line) {
    const std::string_view content = trimmed(withoutLineEnd(line));
    if (content.empty()) {
        return {Line::Kind::blank, {}, {}};
    }
    if (content.front() == ';') {
        return {};
    }
    if (content.front() == '[') {
        const auto close = content.find(']');
        if (close == std::string_view::npos) {
            return {};
        }
        return {Line::Kind::header, trimmed(content.substr(1, close - 1)), {}};
    }
    const auto equals = content.find('=');
    if (equals == std::string_view::npos) {
        return {Line::Kind::key, content, {}};
    }
    return {Line::Kind::key, trimmed(content.substr(0, equals)), trimmed(content.substr(equals + 1))};
}

bool fitsOneLine(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos;
}

bool isSectionName(std::string_view name) {
    return fitsOneLine(name) && name.find(']') == std::string_view::npos;
}

bool isKeyName(std::string_view name) {
    return fitsOneLine(name) && name.find('=') == std::string_view::npos && !name.starts_with(';') &&
           !name.starts_with('[');
}

// The key's line with another value; the key's spelling, the blanks around "=" and the line end are kept.
std::string withValue(const std::string& line, std::string_view value) {
    const std::string_view content = withoutLineEnd(line);
    const std::string_view end = std::string_view(line).substr(content.size());
    std::string result;
    if (const auto equals = content.find('='); equals != std::string_view::npos) {
        const auto start = std::min(content.find_first_not_of(blanks, equals + 1), content.size());
        result.append(content.substr(0, start));
    } else {
        result.append(content.substr(0, content.find_last_not_of(blanks) + 1)).append("=");
    }
    return result.append(value).append(end);
}

// Nothing if there is an odd byte or an unpaired surrogate.
std::optional<std::string> fromUtf16(std::string_view bytes) {
    if (bytes.size() % 2 != 0) {
        return {};
    }
    const auto unitAt = [bytes](std::size_t i) -> char32_t {
        return static_cast<unsigned char>(bytes[i]) |
               static_cast<char32_t>(static_cast<unsigned char>(bytes[i + 1])) << 8;
    };
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        char32_t codePoint = unitAt(i);
        if (codePoint >= 0xD800 && codePoint <= 0xDFFF) {
            i += 2;
            const char32_t low = i < bytes.size() ? unitAt(i) : 0;
            if (codePoint >= 0xDC00 || low < 0xDC00 || low > 0xDFFF) {
                return {};
            }
            codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (low - 0xDC00);
        }
        appendCodePoint(text, codePoint);
    }
    return text;
}

void appendUtf16(std::string& bytes, std::string_view text) {
    const auto putUnit = [&bytes](char32_t unit) {
        bytes.push_back(static_cast<char>(unit & 0xFF));
        bytes.push_back(static_cast<char>(unit >> 8));
    };
    for (std::size_t position = 0; position < text.size();) {
        char32_t codePoint = decodeCodePoint(text, position);
        if (codePoint == invalidCodePoint) {
            codePoint = U'\uFFFD';
        }
        if (codePoint < 0x10000) {
            putUnit(codePoint);
        } else {
            putUnit(0xD800 + ((codePoint - 0x10000) >> 10));
            putUnit(0xDC00 + ((codePoint - 0x10000) & 0x3FF));
        }
    }
}

std::string asUtf8(std::string_view bytes) {
    for (std::size_t position = 0; position < bytes.size();) {
        if (decodeCodePoint(bytes, position) == invalidCodePoint) {
            std::string text;
            for (const char c : bytes) {
                appendCodePoint(text, static_cast<unsigned char>(c));
            }
            return text;
        }
    }
    return std::string(bytes);
}

// Of the user's own file: what another has put in its place, even just now, is refused.
std::string readWhole(std::string_view path) {
    const std::unique_ptr<InputFile> file = openOwnRegular(path);
    std::string content;
    std::array<char, 4096> block{};
    while (const std::size_t count = file->read(block)) {
        content.append(block.data(), count);
        if (content.size() > largestFile) {
            throw fileError(errorNumber::overflow, path, NotDone::read);
        }
    }
    return content;
}

} // namespace

std::optional<IniText> IniText::fromBytes(std::string_view bytes) {
    IniText result;
    std::string text;
    if (bytes.starts_with(utf16Mark)) {
        auto decoded = fromUtf16(bytes.substr(utf16Mark.size()));
        if (!decoded) {
            return {};
        }
        result.encoding_ = Encoding::utf16;
        text = std::move(*decoded);
    } else if (bytes.starts_with(utf8Mark)) {
        result.encoding_ = Encoding::utf8WithMark;
        text = bytes.substr(utf8Mark.size());
    } else {
        text = bytes;
    }
    if (text.find('\0') != std::string::npos) {
        return {};
    }
    for (std::size_t start = 0; start < text.size();) {
        const auto end = std::min(text.find('\n', start), text.size() - 1) + 1;
        result.lines_.push_back(text.substr(start, end - start));
        start = end;
    }
    if (!result.lines_.empty()) {
        const std::string& first = result.lines_.front();
        result.lineEnd_ = first.ends_with('\n') && !first.ends_with("\r\n") ? "\n" : "\r\n";
    }
    return result;
}

std::string IniText::toBytes() const {
    std::string bytes(encoding_ == Encoding::utf16          ? utf16Mark
                      : encoding_ == Encoding::utf8WithMark ? utf8Mark
                                                            : "");
    for (const std::string& line : lines_) {
        if (encoding_ == Encoding::utf16) {
            appendUtf16(bytes, line);
        } else {
            bytes.append(line);
        }
    }
    return bytes;
}

std::optional<IniText::Section> IniText::findSection(std::string_view name) const {
    std::optional<Section> found;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const Line line = parsed(lines_[i]);
        if (line.kind != Line::Kind::header) {
            continue;
        }
        if (found) {
            found->end = i;
            break;
        }
        if (equalIgnoringAsciiCase(line.name, trimmed(name))) {
            found = Section{i, lines_.size()};
        }
    }
    return found;
}

std::optional<std::size_t> IniText::findKey(std::string_view section, std::string_view key) const {
    if (const auto found = findSection(section)) {
        for (std::size_t i = found->header + 1; i < found->end; ++i) {
            const Line line = parsed(lines_[i]);
            if (line.kind == Line::Kind::key && equalIgnoringAsciiCase(line.name, trimmed(key))) {
                return i;
            }
        }
    }
    return {};
}

std::optional<std::string> IniText::value(std::string_view section, std::string_view key) const {
    if (const auto found = findKey(section, key)) {
        if (const auto value = parsed(lines_[*found]).value) {
            return asUtf8(*value);
        }
    }
    return {};
}

std::vector<std::string> IniText::keys(std::string_view section) const {
    std::vector<std::string> result;
    if (const auto found = findSection(section)) {
        for (std::size_t i = found->header + 1; i < found->end; ++i) {
            const Line line = parsed(lines_[i]);
            if (line.kind == Line::Kind::key && line.value) {
                result.push_back(asUtf8(line.name));
            }
        }
    }
    return result;
}

void IniText::insertLine(std::size_t position, std::string content) {
    if (position > 0 && !lines_[position - 1].ends_with('\n')) {
        std::string& last = lines_[position - 1];
        last.append(last.ends_with('\r') ? "\n" : lineEnd_); // a second CR would belong to its value
    }
    content.append(lineEnd_);
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(position), std::move(content));
}

bool IniText::setValue(std::string_view section, std::string_view key, std::string_view value) {
    section = trimmed(section);
    key = trimmed(key);
    if (!isSectionName(section) || !isKeyName(key) || !fitsOneLine(value)) {
        return false;
    }
    if (const auto found = findKey(section, key)) {
        lines_[*found] = withValue(lines_[*found], value);
        return true;
    }
    auto found = findSection(section);
    if (!found) {
        insertLine(lines_.size(), "[" + std::string(section) + "]");
        found = Section{lines_.size() - 1, lines_.size()};
    }
    std::size_t position = found->end;
    while (parsed(lines_[position - 1]).kind == Line::Kind::blank) {
        --position;
    }
    insertLine(position, std::string(key).append("=").append(value));
    return true;
}

bool IniText::removeKey(std::string_view section, std::string_view key) {
    const auto found = findKey(section, key);
    if (found) {
        lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(*found));
    }
    return found.has_value();
}

bool IniText::removeSection(std::string_view section) {
    const auto found = findSection(section);
    if (found) {
        lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(found->header),
                     lines_.begin() + static_cast<std::ptrdiff_t>(found->end));
    }
    return found.has_value();
}

std::string_view unquoted(std::string_view text) noexcept {
    const bool quoted =
        text.size() >= 2 && text.front() == text.back() && (text.front() == '"' || text.front() == '\'');
    return quoted ? text.substr(1, text.size() - 2) : text;
}

std::optional<IniText> readIniFile(std::string_view path) noexcept {
    try {
        return IniText::fromBytes(readWhole(path));
    } catch (...) {
        return {};
    }
}

bool editIniFile(std::string_view path, const std::function<bool(IniText&)>& edit) noexcept {
    try {
        if (path.empty()) {
            return false;
        }
        std::string before;
        try {
            before = readWhole(path);
            // Replacing the file would ignore that the user made it read-only.
            if (!fileIsWritable(path)) {
                return false;
            }
        } catch (const RuntimeError& error) {
            if (error.number() != errorNumber::fileNotFound) {
                return false;
            }
        }
        auto text = IniText::fromBytes(before);
        if (!text || !edit(*text)) {
            return false;
        }
        if (const std::string after = text->toBytes(); after != before) {
            replaceFile(path, after, NewFile::own);
        }
        return true;
    } catch (...) {
        return false;
    }
}

} // namespace platform

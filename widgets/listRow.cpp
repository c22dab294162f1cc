#include "widgets/listRow.h"

#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>

namespace {

// The fields of a row, each preceded by its length: key, tag, then the text and tag of each cell. A cell's
// tag begins with its kind; no tag is an empty field.
constexpr std::size_t fieldsBeforeCells = 2;
constexpr std::size_t fieldsOfCell = 2;
constexpr char numberTag = 'n';
constexpr char textTag = 't';

using Length = std::uint32_t;

template <class Number>
void appendBytes(std::string& bytes, Number number) {
    const auto raw = std::bit_cast<std::array<char, sizeof(Number)>>(number);
    bytes.append(raw.data(), raw.size());
}

template <class Number>
Number readBytes(std::string_view bytes) {
    Number number{};
    std::memcpy(&number, bytes.data(), sizeof number);
    return number;
}

void appendText(std::string& bytes, std::string_view text) {
    appendBytes(bytes, static_cast<Length>(text.size()));
    bytes.append(text);
}

void appendTag(std::string& bytes, const CellTag& tag) {
    if (const double* number = std::get_if<double>(&tag)) {
        appendBytes(bytes, static_cast<Length>(1 + sizeof *number));
        bytes.push_back(numberTag);
        appendBytes(bytes, *number);
    } else if (const std::string_view* text = std::get_if<std::string_view>(&tag)) {
        appendBytes(bytes, static_cast<Length>(1 + text->size()));
        bytes.push_back(textTag);
        bytes.append(*text);
    } else {
        appendBytes(bytes, Length{0});
    }
}

CellTag readTag(std::string_view field) {
    if (field.empty()) {
        return {};
    }
    if (field.front() == numberTag) {
        return readBytes<double>(field.substr(1));
    }
    return field.substr(1);
}

} // namespace

std::optional<double> numberOf(const CellTag& tag) {
    if (const double* number = std::get_if<double>(&tag)) {
        return *number;
    }
    if (const std::string_view* text = std::get_if<std::string_view>(&tag)) {
        double result = 0;
        const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), result);
        if (error == std::errc() && end == text->data() + text->size()) {
            return result;
        }
    }
    return {};
}

ListRow::ListRow(std::string_view key, std::string_view tag, std::span<const ListCell> cells) {
    std::size_t size =
        (fieldsBeforeCells + fieldsOfCell * cells.size()) * sizeof(Length) + key.size() + tag.size();
    for (const ListCell& cell : cells) {
        const std::string_view* text = std::get_if<std::string_view>(&cell.tag);
        size += cell.text.size() + 1 + (text ? text->size() : sizeof(double));
    }
    bytes_.reserve(size);
    appendText(bytes_, key);
    appendText(bytes_, tag);
    for (const ListCell& cell : cells) {
        appendText(bytes_, cell.text);
        appendTag(bytes_, cell.tag);
    }
}

std::string_view ListRow::key() const {
    return field(0);
}

std::string_view ListRow::tag() const {
    return field(1);
}

ListCell ListRow::cell(int column) const {
    const std::size_t first = fieldsBeforeCells + fieldsOfCell * static_cast<std::size_t>(column);
    return {field(first), readTag(field(first + 1))};
}

std::string_view ListRow::field(std::size_t index) const {
    std::string_view rest = bytes_;
    while (!rest.empty()) {
        const auto length = readBytes<Length>(rest);
        rest.remove_prefix(sizeof length);
        if (index-- == 0) {
            return rest.substr(0, length);
        }
        rest.remove_prefix(length);
    }
    return {};
}

#include "db/copyRows.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "platform/fileError.h"
#include "platform/files.h"
#include "platform/text.h"

namespace {

constexpr std::uint64_t mostBytesPerByte = 2;
constexpr const char* flag = "0 or 1";

// The number that the value is or, as a text, stands for.
std::optional<double> numberOf(const Value& value) {
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        return static_cast<double>(*whole);
    }
    if (const auto* real = std::get_if<double>(&value)) {
        return *real;
    }
    const auto& text = std::get<std::string>(value);
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

// The figures of a scan are computed from these columns, or are these.
struct NumberColumn {
    std::string_view name;
    double greatest;
    bool isWhole;
    const char* kind;
};

constexpr std::array<NumberColumn, 12> numberColumns{{
    {"size", 0x1p63, false, "a number of bytes"},
    {"idx", 0x1p53, true, "a number of a row"}, // later rows have greater ones
    {"sizeOnDisk", 0x1p63, false, "a number of bytes"},
    {"fileCount", 0x1p53, true, "a number of files"},
    {"folderCount", 0x1p53, true, "a number of folders"},
    {"scanId", 0x1p53, true, "a number of a scan"},
    {"cancelled", 1, true, flag},
    {"exact", 1, true, flag},
    {"withOwners", 1, true, flag},
    {"onDisk", 1, true, flag},
    {"unreadableFolders", 0x1p53, true, "a number of folders"},
    {"unreadableFiles", 0x1p53, true, "a number of files"},
}};

// The source and target of a value.
struct FieldPair {
    Field* source;
    Field* target;
    const NumberColumn* number; // null for any other column
};

using FieldPairs = std::vector<FieldPair>;

const NumberColumn* numberColumn(std::string_view name) {
    for (const NumberColumn& column : numberColumns) {
        if (platform::equalIgnoringAsciiCase(column.name, name)) {
            return &column;
        }
    }
    return nullptr;
}

// Without columns, all of them.
FieldPairs pairByName(Recordset& source, Recordset& target, const std::string& file,
                      std::span<const std::string_view> columns) {
    FieldPairs pairs;
    for (int i = 0; i < source.FieldCount(); ++i) {
        Field& field = source.Fields(i);
        const auto isNamed = [&](std::string_view column) {
            return platform::equalIgnoringAsciiCase(column, field.name());
        };
        if (!columns.empty() && std::none_of(columns.begin(), columns.end(), isNamed)) {
            continue;
        }
        try {
            pairs.push_back({&field, &target.Fields(field.name()), numberColumn(field.name())});
        } catch (const RuntimeError&) {
            throw platform::fileError(databaseError::unknownTargetField,
                                      "The rows have an unknown field, '" + field.name() + "'", file,
                                      platform::NotDone::loaded);
        }
    }
    return pairs;
}

[[noreturn]] void refuse(const std::string& reason, const std::string& file) {
    throw platform::fileError(databaseError::damaged, "The database is damaged; " + reason, file,
                              platform::NotDone::loaded);
}

void requireNumber(const Value& value, const NumberColumn& column, const std::string& file) {
    const auto number = numberOf(value);
    const bool isSound =
        number && std::abs(*number) <= column.greatest && (!column.isWhole || *number == std::trunc(*number));
    if (!isSound) {
        refuse("its column '" + std::string(column.name) + "' holds what is not " + column.kind, file);
    }
}

// The target's own reason would name the target.
void append(Recordset& target, const std::string& file) {
    try {
        target.Update();
    } catch (const RuntimeError& error) {
        if (error.number() == databaseError::duplicateKey) {
            refuse("two of its rows have the same number", file);
        }
        throw;
    }
}

std::int64_t copy(Database& from, Database& to, std::string_view table,
                  std::span<const std::string_view> columns, const std::function<bool()>& goesOn) {
    constexpr std::int64_t rowsPerLook = 4096;
    const std::string file(from.Name());
    const auto source = from.OpenStored(table);
    const auto target = to.OpenRecordset(table);
    const FieldPairs pairs = pairByName(*source, *target, file, columns);
    const std::uint64_t most =
        mostBytesPerByte * (platform::fileSize(from.Name()) + platform::fileSize(from.Name() + "-wal"));
    std::uint64_t bytes = 0; // a row and a number are counted as one
    std::int64_t count = 0;
    for (; !source->EndOfFile(); source->MoveNext(), ++count) {
        if (goesOn && count % rowsPerLook == 0 && !goesOn()) {
            break;
        }
        ++bytes;
        target->AddNew();
        for (const auto& [field, place, number] : pairs) {
            if (number == nullptr && field->isText()) {
                const std::string_view text = field->text(); // which lives until the source's next row
                bytes += text.size();
                place->setText(text);
                continue;
            }
            const Value value = field->value();
            if (std::holds_alternative<std::monostate>(value)) {
                continue;
            }
            if (number != nullptr) {
                requireNumber(value, *number, file);
            }
            const auto* text = std::get_if<std::string>(&value); // of a number
            bytes += text == nullptr ? 1 : text->size();
            place->set(value);
        }
        if (bytes > most) {
            refuse("it claims more than can fit in it", file);
        }
        append(*target, file);
    }
    return count;
}

} // namespace

std::int64_t copyRows(Database& from, Database& to, std::string_view table) {
    return copy(from, to, table, {}, {});
}

std::int64_t copyColumns(Database& from, Database& to, std::string_view table,
                         std::span<const std::string_view> columns, const std::function<bool()>& goesOn) {
    return copy(from, to, table, columns, goesOn);
}

void copyOwnRows(Database& from, Database& to, std::string_view condition) {
    const auto source = from.OpenRecordset("select * from details where " + std::string(condition));
    const auto target = to.OpenRecordset("details");
    const FieldPairs pairs = pairByName(*source, *target, from.Name(), {});
    for (; !source->EndOfFile(); source->MoveNext()) {
        target->AddNew();
        for (const auto& [field, place, number] : pairs) {
            if (!field->isNull()) {
                place->set(field->value());
            }
        }
        target->Update();
    }
}

#include "db/copyRows.h"

#include <string>
#include <utility>
#include <vector>

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/runtimeError.h"

namespace {

using FieldPairs = std::vector<std::pair<Field*, Field*>>; // the source and target of a value

FieldPairs pairByName(Recordset& source, Recordset& target, const Database& from) {
    FieldPairs pairs;
    for (int i = 0; i < source.FieldCount(); ++i) {
        Field& field = source.Fields(i);
        try {
            pairs.emplace_back(&field, &target.Fields(field.name()));
        } catch (const RuntimeError&) {
            throw RuntimeError(databaseError::unknownTargetField,
                               "The rows have an unknown field '" + field.name() +
                                   "': " + platform::displayPath(from.Name()));
        }
    }
    return pairs;
}

} // namespace

std::int64_t copyRows(Database& from, Database& to, std::string_view table) {
    const auto source = from.OpenRecordset(std::string("select * from ").append(table));
    const auto target = to.OpenRecordset(table);
    const FieldPairs pairs = pairByName(*source, *target, from);
    // The pages of a damaged or forged file may form an endless loop.
    const std::uint64_t bytes = platform::fileSize(from.Name()) + platform::fileSize(from.Name() + "-wal");
    std::int64_t count = 0;
    for (; !source->EndOfFile(); source->MoveNext(), ++count) {
        if (static_cast<std::uint64_t>(count) > bytes) {
            throw RuntimeError(databaseError::damaged,
                               "The database is damaged; it claims more rows than can fit in it: " +
                                   platform::displayPath(from.Name()));
        }
        target->AddNew();
        for (const auto& [value, place] : pairs) {
            place->set(value->value());
        }
        target->Update();
    }
    return count;
}

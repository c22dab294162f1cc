#include "db/scanFacts.h"

#include <algorithm>
#include <functional>

#include "platform/locale.h"
#include "platform/runtimeError.h"
#include "platform/text.h"

namespace {

constexpr std::size_t mostScans = 1000;
constexpr std::size_t longestPath = 32767;

Field* fieldOf(Recordset& rows, std::string_view name) {
    for (int i = 0; i < rows.FieldCount(); ++i) {
        if (platform::equalIgnoringAsciiCase(rows.Fields(i).name(), name)) {
            return &rows.Fields(i);
        }
    }
    return nullptr;
}

std::optional<bool> flag(Recordset& rows, std::string_view name) {
    const Field* const field = fieldOf(rows, name);
    return field == nullptr || field->isNull() ? std::nullopt : std::optional(field->number() != 0);
}

std::string_view text(Recordset& rows, std::string_view name) {
    const Field* const field = fieldOf(rows, name);
    return field == nullptr ? std::string_view() : field->text();
}

// Only a database that has the column tells that there were no patterns.
std::optional<std::size_t> patterns(Recordset& rows) {
    constexpr std::string_view column = "excludes";
    return fieldOf(rows, column) == nullptr
               ? std::nullopt
               : std::optional(std::hash<std::string_view>()(text(rows, column)));
}

bool isIn(std::string_view path, std::string_view folder) {
    return platform::sameName(path.substr(0, folder.size()), folder);
}

template <class Fact>
bool differ(const std::optional<Fact>& left, const std::optional<Fact>& right) {
    return left && right && *left != *right;
}

} // namespace

std::vector<ScanFacts> modScanFacts::read(Database& database) {
    std::vector<ScanFacts> result;
    std::unique_ptr<Recordset> rows;
    try {
        rows = database.OpenStored("scans");
    } catch (const RuntimeError& error) {
        if (error.number() == databaseError::noSuchTable) {
            return result;
        }
        throw;
    }
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        const std::string_view path = text(*rows, "path");
        if (path.empty() || path.size() > longestPath) {
            continue;
        }
        if (result.size() == 2 * mostScans) {
            result.erase(result.begin(), result.begin() + mostScans);
        }
        result.push_back({std::string(path), flag(*rows, "cancelled"), flag(*rows, "exact"),
                          flag(*rows, "withOwners"), patterns(*rows)});
    }
    return result;
}

const ScanFacts* modScanFacts::of(const std::vector<ScanFacts>& scans, std::string_view folder) {
    const auto last = [&](const auto& fits) {
        const auto found = std::find_if(scans.rbegin(), scans.rend(), fits);
        return found == scans.rend() ? nullptr : &*found;
    };
    const ScanFacts* const whole = last([&](const ScanFacts& scan) { return isIn(folder, scan.path); });
    return whole != nullptr ? whole : last([&](const ScanFacts& scan) { return isIn(scan.path, folder); });
}

std::string modScanFacts::differences(const ScanFacts* before, const ScanFacts* now) {
    std::string result;
    const auto add = [&](bool applies, std::string_view reason) {
        if (applies) {
            result.append(result.empty() ? "" : ", ").append(reason);
        }
    };
    add(before != nullptr && before->cancelled.value_or(false), "the saved scan was cancelled");
    add(now != nullptr && now->cancelled.value_or(false), "the later scan was cancelled");
    if (before != nullptr && now != nullptr) {
        add(differ(before->exact, now->exact), "only one of the two has exact sizes");
        add(differ(before->withOwners, now->withOwners), "owners were looked up in only one of the two");
        add(differ(before->excludes, now->excludes), "they left out different items");
    }
    return result;
}

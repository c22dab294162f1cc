#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "db/dao.h"

// How the scan was made that rows of table `details` come from, as far as it is known: a row of table
// `scans`.
struct ScanFacts {
    std::string path; // of the folder with which the scan began, internal, with a trailing "\"
    std::optional<bool> cancelled;
    std::optional<bool> exact;
    std::optional<bool> withOwners;
    std::optional<std::size_t> excludes; // a hash of the patterns
};

namespace modScanFacts {

// All that the database tells, in the order of scanning, but no more than the last 1,000; nothing if it has
// no such table. The file need not be trusted. Throws as Database::OpenStored does.
[[nodiscard]] std::vector<ScanFacts> read(Database& database);

// Those of the last scan that the folder was part of, else of the last one that began below it; null if there
// is none.
[[nodiscard]] const ScanFacts* of(const std::vector<ScanFacts>& scans, std::string_view folder);

// Why figures of the two scans do not go together: "the saved scan was cancelled, only one of the two has
// exact sizes"; empty if nothing is known to be in the way. Either may be null.
[[nodiscard]] std::string differences(const ScanFacts* before, const ScanFacts* now);

} // namespace modScanFacts

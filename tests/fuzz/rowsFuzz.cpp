// Rows of a loaded scan: a byte of options, then rows that each end in U+001E, whose fields each end in
// U+001F. What no load accepts as a size is no size here.

#include <array>
#include <charconv>
#include <cmath>

#include "fuzz/support/input.h"
#include "fuzz/support/loadedScan.h"
#include "fuzz/support/require.h"

namespace {

constexpr std::array columns{"drive",       "fullPath",     "parentFolder", "fileName", "extension",
                             "description", "dateAccessed", "dateModified", "owner"};
constexpr int mostRows = 40;

double sizeOf(std::string_view text) {
    double size = 0;
    std::from_chars(text.data(), text.data() + text.size(), size);
    return std::abs(size) <= 0x1p63 ? size : 0;
}

void add(Recordset& details, std::string_view row) {
    Input fields(reinterpret_cast<const std::uint8_t*>(row.data()), row.size()); // NOLINT
    details.AddNew();
    details.Fields("isFolder").setInteger(fields.upTo('\x1F') == "1" ? 1 : 0);
    details.Fields("size").setNumber(sizeOf(fields.upTo('\x1F')));
    for (const char* column : columns) {
        if (fields.isEmpty()) {
            break; // the others are NULL
        }
        details.Fields(column).setText(fields.upTo('\x1F'));
    }
    details.Update();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static LoadedScan scan;
    Input input(data, size);
    const unsigned options = input.byte();
    Database& database = scan.working.database();
    database.setHoldsLoadedRows(true);
    database.Execute("delete * from details");
    {
        const auto details = database.OpenRecordset("details");
        database.BeginTrans();
        for (int row = 0; row < mostRows && !input.isEmpty(); ++row) {
            add(*details, input.upTo('\x1E'));
        }
        database.CommitTrans();
    }
    scan.requireSoundOutputs({(options & 1U) != 0, (options & 2U) != 0, (options & 4U) != 0});
    return 0;
}

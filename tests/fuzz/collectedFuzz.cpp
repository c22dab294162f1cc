// What a server says: a byte of options (1: the separator of Windows, 2: a list of scans and not rows, 4: a
// text), then that.

#include <vector>

#include "collect/httpClient.h"
#include "collect/rowForm.h"
#include "fuzz/support/input.h"
#include "fuzz/support/loadedScan.h"
#include "fuzz/support/require.h"
#include "platform/text.h"

namespace {

using modRowForm::Row;

std::vector<Row> rowsIn(std::string_view bytes, char separator) {
    modRowForm::Decoder decoder(separator);
    std::vector<Row> rows;
    Row row;
    while (!bytes.empty()) {
        const std::size_t before = bytes.size();
        if (!decoder.take(bytes, row)) {
            break;
        }
        require(bytes.size() < before, "a row takes bytes");
        rows.push_back(row);
    }
    return rows;
}

// Whatever rows a server makes up: those that were stored go to a server and come back as they were stored.
void requireSameAgain(Database& database, const std::vector<Row>& rows, char separator) {
    database.Execute("delete * from details");
    database.BeginTrans();
    {
        const auto details = database.OpenRecordset("details");
        for (const Row& row : rows) {
            details->AddNew();
            for (std::size_t i = 1; i < row.size(); ++i) { // but for the number, which may be there twice
                details->Fields(modRowForm::columns[i]).set(row[i]);
            }
            details->Update();
        }
    }
    database.CommitTrans();
    const auto stored = database.OpenRecordset("select " + modRowForm::columnList() + " from details");
    modRowForm::Encoder encoder(*stored, {}, separator);
    constexpr std::size_t scanColumns = 1 + 1 + 8 + 4; // two empty texts and two numbers
    for (; !stored->EndOfFile(); stored->MoveNext()) {
        std::string bytes;
        encoder.append(bytes);
        const std::vector<Row> again = rowsIn(std::string_view(bytes).substr(scanColumns), separator);
        require(again.size() == 1, "a row comes back");
        for (std::size_t i = 0; i < modRowForm::columns.size(); ++i) {
            require(again[0][i] == stored->Fields(modRowForm::columns[i]).value(), "every column is equal");
        }
    }
}

void requireSafe(std::string_view text) {
    const std::string line = oneSafeLine(text);
    require(platform::characterCount(line) <= 201, "the line is short");
    for (std::size_t position = 0; position < line.size();) {
        const char32_t c = platform::decodeCodePoint(line, position);
        const bool isSafe =
            c >= 0x20 && c != 0x7F && c != platform::invalidCodePoint && (c < 0x80 || c >= 0xA0);
        require(isSafe, "nothing controls a terminal");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static LoadedScan scan;
    Input input(data, size);
    const unsigned options = input.byte();
    const char separator = (options & 1U) != 0 ? '\\' : '/';
    if ((options & 4U) != 0) {
        requireSafe(input.rest());
        return 0;
    }
    try {
        if ((options & 2U) != 0) {
            const auto scans = modRowForm::decodedScans(input.rest());
            const std::string bytes = modRowForm::encodedScans(scans);
            require(modRowForm::encodedScans(modRowForm::decodedScans(bytes)) == bytes, "scans come back");
        } else {
            requireSameAgain(scan.working.database(), rowsIn(input.rest(), separator), separator);
        }
    } catch (const RuntimeError& error) {
        require(error.number() == databaseError::damaged, "it says that this is no row");
    }
    return 0;
}

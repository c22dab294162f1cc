#include "fuzz/support/loadedScan.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <vector>

#include "base/terminalText.h"
#include "console/changeTables.h"
#include "console/figureTables.h"
#include "db/earlierScan.h"
#include "export/clipboard.h"
#include "export/clsExport.h"
#include "export/excelReport.h"
#include "export/htmlReport.h"
#include "export/listClipboard.h"
#include "export/listTable.h"
#include "export/reportFormats.h"
#include "export/textReport.h"
#include "export/xmlReport.h"
#include "fuzz/support/reportProperties.h"
#include "fuzz/support/require.h"
#include "fuzz/support/rootPath.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "scan/savedScan.h"
#include "support/expected.h"
#include "views/comparison.h"
#include "views/folderFigures.h"

namespace {

using modExport::ReportFormat;

WorkingDatabase prepare(const TemporaryFolder& folder, clsUserInterface& userInterface) {
    platform::copyFile(templateFile(), rootPath(folder, "001.dat"));
    return modDatabase::prepareDatabase(rootPath(folder), rootPath(folder, "main.dat"), userInterface);
}

template <class Write>
std::pair<std::string, std::size_t> written(const modExport::ReportContext& context, ReportFormat format,
                                            Write write) {
    platform::TextSink sink;
    modExport::ReportRows rows(context, modExport::reportQuery(format, context.options.detail));
    write(rows, sink);
    return {sink.text(), static_cast<std::size_t>(rows.count())};
}

// The page of a number of rows with plain values, which tells what a writer's own markup is.
std::string benignPage(int rows, bool exact, bool withOwner) {
    LoadedScan scan;
    for (int i = 0; i < rows; ++i) {
        scan.working.database().Execute(
            "insert into details ([drive], [fullPath], [size]) values (\"/\\\", \"a\", 2)");
    }
    scan.settings.setExact(exact);
    scan.settings.setGetOwnerInfo(withOwner);
    clsExport options;
    options.detail = clsExport::detailed;
    return written({scan.working.database(), scan.userInterface, scan.settings, options}, ReportFormat::html,
                   modExport::writeHtmlReport)
        .first;
}

// A list of the rows' names, as the window copies one.
struct Names final : modExport::ListTable {
    [[nodiscard]] std::span<const Column> columns() const override { return head; }
    [[nodiscard]] std::size_t rowCount() const override { return rows.size(); }
    [[nodiscard]] std::string_view text(std::size_t row, std::size_t column) const override {
        return rows[row][column];
    }
    [[nodiscard]] std::optional<double> number(std::size_t /*row*/, std::size_t /*column*/) const override {
        return {};
    }
    std::array<Column, 2> head{{{"Name", Kind::text}, {"Date Modified", Kind::date}}};
    std::vector<std::array<std::string, 2>> rows;
};

struct Copied final : modExport::Clipboard {
    void clear() override { text.clear(); }
    void setText(std::string_view copied) override { text = copied; }
    std::string text;
};

void requireSafeLines(const std::string& text, std::size_t mostLines) {
    require(isUtf8(text) &&
                std::all_of(text.begin(), text.end(),
                            [](char c) { return c < 0 || (c >= 0x20 && c != 0x7F) || c == '\n'; }),
            "a terminal gets no control characters");
    require(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) <= mostLines,
            "no name brings in a line");
}

} // namespace

LoadedScan::LoadedScan() : working(prepare(folder, userInterface)) {}

void LoadedScan::requireSoundOutputs(const Outputs& outputs) {
    settings.setExact(outputs.exact);
    settings.setGetOwnerInfo(outputs.withOwner);
    requireSoundFigures();
    for (const std::int32_t detail : {clsExport::detailed, clsExport::summary}) {
        requireSoundReports(detail, outputs.withWorkbook);
    }
    requireSoundList();
    require(userInterface.messages.empty(), "no output fails");
}

void LoadedScan::requireSoundFigures() const {
    constexpr std::size_t top = 3;
    constexpr std::size_t mostFolders = 5; // each is found by the same queries
    constexpr std::size_t width = 80;
    Database& database = working.database();
    std::vector<std::string> keys = modSavedScan::topFolders(database);
    keys.resize(std::min(keys.size(), mostFolders));
    for (const std::string& key : keys) {
        require(isUtf8(forTerminal(platform::displayPath(key))), "a terminal gets valid UTF-8");
        const auto entries = modFigures::chartEntries(database, key);
        require(std::is_sorted(entries.begin(), entries.end(),
                               [](const auto& left, const auto& right) { return left.size < right.size; }),
                "the chart's entries are sorted");
        requireSafeLines(barChart(entries, top, width), top + 1);
        requireSafeLines(groupTable("Extension", modFigures::fileTypes(database, key), top), top + 2);
        requireSafeLines(groupTable("Owner", modFigures::owners(database, key), 0), 1000);
        static_cast<void>(modSavedScan::findFolder(database, platform::displayPath(key)));
        static_cast<void>(modSavedScan::subfolders(database, key));
    }
    require(modSavedScan::scannedFolders(database, mostFolders).size() <= mostFolders,
            "no more than asked for");
    requireSafeLines(modFigures::itemsText(database), 0);
}

void LoadedScan::requireSoundComparison(const std::string& file) {
    constexpr std::size_t top = 3;
    constexpr std::size_t mostFolders = 5;
    constexpr std::size_t mostLines = 4 * (top + 3) + 3;
    const EarlierScan earlier(working, file, userInterface, {});
    modChanges::makeTable(earlier.database());
    std::vector<std::string> keys = modSavedScan::topFolders(working.database());
    keys.resize(std::min(keys.size(), mostFolders));
    std::int64_t number = 0;
    for (const std::string& key : keys) {
        const modChanges::Request request{key, key, ++number, number % 2 == 0};
        const auto result =
            modChanges::compare({working.database(), earlier.database(), userInterface}, request);
        const auto count = [&](const auto& counts, modChanges::State state) {
            return counts.at(static_cast<std::size_t>(state));
        };
        using enum modChanges::State;
        require(result.complete && count(result.files, gone) == count(result.files, appeared),
                "a scan has the files that it has");
        requireSafeLines(changeTables(earlier.database(), request, result, top), mostLines);
    }
}

void LoadedScan::requireSoundReports(std::int32_t detail, bool withWorkbook) {
    static std::map<std::pair<bool, bool>, std::pair<std::string, std::string>> benignPages;
    const bool exact = settings.exact();
    const bool withOwner = settings.getOwnerInfo();
    auto& [once, twice] = benignPages[{exact, withOwner}];
    if (once.empty()) {
        once = benignPage(1, exact, withOwner);
        twice = benignPage(2, exact, withOwner);
    }
    clsExport options;
    options.detail = detail;
    const modExport::ReportContext context{working.database(), userInterface, settings, options,
                                           modSavedScan::scannedFolders};
    const auto [page, pageRows] = written(context, ReportFormat::html, modExport::writeHtmlReport);
    requireSoundPage(page, pageRows, once, twice, exact);

    const auto [text, textRows] = written(context, ReportFormat::text, [](auto& rows, auto& sink) {
        modExport::writeTextReport(rows, sink, ",", "\"");
    });
    requireSoundCsv(text, textRows, 7, true);

    if (detail == clsExport::summary) {
        const auto [document, rows] = written(context, ReportFormat::xml, modExport::writeXmlReport);
        requireSoundXml(document, rows);
    } else if (withWorkbook) {
        const auto [workbook, rows] = written(context, ReportFormat::excel, modExport::writeExcelReport);
        requireSoundWorkbook(workbook);
    }
}

void LoadedScan::requireSoundList() {
    Names names;
    const auto rows = working.database().OpenRecordset("select fileName, dateModified from details");
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        names.rows.push_back({std::string(rows->Fields(0).text()), std::string(rows->Fields(1).text())});
    }
    Copied copied;
    if (!names.rows.empty()) {
        modGlobal::copyClipboardLvw(names, userInterface, copied, settings.exact(), true);
        requireSoundCsv(copied.text, names.rows.size(), 2, false);
    }
}

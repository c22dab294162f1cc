// The cost of reports and folder totals, read from the working database.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "db/dao.h"
#include "export/htmlReport.h"
#include "export/reportFormats.h"
#include "export/textReport.h"
#include "platform/files.h"
#include "support/reportFixture.h"

namespace {

constexpr int filesPerFolder = 10;

// `count` files, ten to a folder.
void fill(ReportFixture& fixture, std::int64_t count) {
    for (std::int64_t number = 0; number < count; ++number) {
        const std::string parent = "bench\\" + std::to_string(number / filesPerFolder) + "\\";
        const std::string path = parent + "a-file-name-of-common-length-" + std::to_string(number) + ".txt";
        const std::string parentFolder = "/\\" + parent;
        fixture.add({path, static_cast<double>(number) * 1000, "03/14/2004 09:05:17 PM",
                     "03/14/2004 09:05:17 PM", "host\\user", false, parentFolder});
    }
}

// One statement whose shape is already prepared, answered through an index.
void folderSum(benchmark::State& state) {
    ReportFixture fixture;
    fill(fixture, 10'000);
    std::int64_t number = 0;
    while (state.KeepRunning()) {
        const auto rows = fixture.database->OpenRecordset(
            "SELECT Sum(details.size) AS SumOfsize From details WHERE (((details.parentFolder)=\"/\\bench\\" +
            std::to_string(number++ % 1000) + "\\\"));");
        benchmark::DoNotOptimize(rows->Fields("sumofsize").number());
    }
}
BENCHMARK(folderSum);

// A sink that discards a report's sorted rows.
class NullSink final : public platform::Sink {
public:
    void write(std::string_view text) override { benchmark::DoNotOptimize(text.data()); }
};

template <class Write>
void report(benchmark::State& state, Write write) {
    ReportFixture fixture;
    fill(fixture, state.range(0));
    const std::string query = modExport::reportQuery(modExport::ReportFormat::text, fixture.options.detail);
    while (state.KeepRunning()) {
        NullSink sink;
        modExport::ReportRows rows(fixture.context(), query);
        write(rows, sink);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void textReport(benchmark::State& state) {
    report(state, [](modExport::ReportRows& rows, platform::Sink& sink) {
        modExport::writeTextReport(rows, sink, ",", "\"");
    });
}
BENCHMARK(textReport)->Arg(10'000);

void htmlReport(benchmark::State& state) {
    report(state, modExport::writeHtmlReport);
}
BENCHMARK(htmlReport)->Arg(10'000);

} // namespace

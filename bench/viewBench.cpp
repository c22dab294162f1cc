// The breakdowns of a folder with a million files.

#include <benchmark/benchmark.h>

#include <array>
#include <filesystem>
#include <string>

#include "db/detailsTable.h"
#include "platform/files.h"
#include "views/folderFigures.h"

namespace {

constexpr int files = 1'000'000;
constexpr int filesPerFolder = 100;

void record(Database& database) {
    constexpr std::array extensions{"c", "h", "txt", "html", "zip", "jpg", "log", "o"};
    DetailsTable details(database);
    database.BeginTrans();
    const auto indexes = database.TakeIndexes("details");
    std::string folder;
    for (int i = 0; i < files; ++i) {
        if (i % filesPerFolder == 0) {
            folder = "/\\home\\somebody\\projects\\" + std::to_string(i) + "\\";
        }
        const std::string path = folder + std::to_string(i);
        details.rows->AddNew();
        details.fullPath.setText(std::string_view(path).substr(2));
        details.drive.setText("/\\");
        details.folder.setText(std::string_view(folder).substr(2));
        details.parentFolder.setText(folder);
        details.extension.setText(extensions.at(static_cast<std::size_t>(i) % extensions.size()));
        details.owner.setText(i % 3 == 0 ? "root" : "somebody");
        details.dateModified.setText("03/14/2026 09:05:17 PM");
        details.size.setNumber(i);
        details.isFolder.setInteger(0);
        details.rows->Update();
    }
    database.RestoreIndexes(indexes);
    database.CommitTrans();
}

void breakdown(benchmark::State& state) {
    const std::string path = (std::filesystem::temp_directory_path() / "spannory-views.dat").string();
    platform::copyFile(SPANNORY_TEMPLATE, path);
    {
        const auto database = DBEngine::OpenDatabase(path);
        record(*database);
        const auto figures = state.range(0) == 0 ? modFigures::fileTypes : modFigures::owners;
        while (state.KeepRunning()) {
            benchmark::DoNotOptimize(figures(*database, "/\\home\\"));
        }
    }
    platform::deleteFile(path);
}
BENCHMARK(breakdown)->ArgName("owners")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

} // namespace

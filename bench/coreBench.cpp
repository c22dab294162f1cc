// The work of a scan and a report for each file or folder.

#include <benchmark/benchmark.h>

#include <filesystem>

#include "base/clsFile.h"
#include "base/dateFormat.h"
#include "base/formatSize.h"
#include "db/detailsTable.h"
#include "db/jetLike.h"
#include "db/jetTranslator.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "scan/dateTexts.h"

namespace {

constexpr std::string_view filePath = "/\\home\\somebody\\projects\\spannory\\platform\\linux\\folders.cpp";

void pathArithmetic(benchmark::State& state) {
    clsFile file;
    while (state.KeepRunning()) {
        file.setFullPath(filePath);
        benchmark::DoNotOptimize(file.drive());
        benchmark::DoNotOptimize(file.fullPathNoDrive());
        benchmark::DoNotOptimize(file.parentFolder());
        benchmark::DoNotOptimize(file.FileName());
        benchmark::DoNotOptimize(file.fileExtension());
    }
}
BENCHMARK(pathArithmetic);

void nameMapping(benchmark::State& state) {
    std::string result;
    while (state.KeepRunning()) {
        result.clear();
        platform::appendInternalName(result, "an ordinary file name.txt");
        benchmark::DoNotOptimize(result.data());
    }
}
BENCHMARK(nameMapping);

void translation(benchmark::State& state) {
    JetTranslator translator;
    while (state.KeepRunning()) {
        translator.translate(
            "select scanCompleteTime from details where fullPath=\"home\\somebody\\projects\\\""
            " and drive=\"/\\\"");
        benchmark::DoNotOptimize(translator.shape().data());
    }
}
BENCHMARK(translation);

void likePrefix(benchmark::State& state) {
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(jetLike(filePath, "/\\home\\somebody\\projects\\*"));
    }
}
BENCHMARK(likePrefix);

void dateOfASecond(benchmark::State& state) {
    DateTexts texts;
    platform::Seconds moment = 1'700'000'000;
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(texts.of(moment));
        moment += state.range(0); // 0: the same second each time; 1: always a new one
    }
}
BENCHMARK(dateOfASecond)->Arg(0)->Arg(1);

void sizeText(benchmark::State& state) {
    std::string result;
    double size = 1;
    while (state.KeepRunning()) {
        result.clear();
        modLvw::appendSize(result, size);
        benchmark::DoNotOptimize(result.data());
        size = size > 1e12 ? 1 : size * 1.7;
    }
}
BENCHMARK(sizeText);

void dateOfAReport(benchmark::State& state) {
    std::string result;
    while (state.KeepRunning()) {
        result.clear();
        modFormat::appendReformattedDate(result, "03/14/2026 09:05:17 PM", modFormat::reportDatePicture);
        benchmark::DoNotOptimize(result.data());
    }
}
BENCHMARK(dateOfAReport);

void rowAppended(benchmark::State& state) {
    const std::string path = (std::filesystem::temp_directory_path() / "spannory-bench.dat").string();
    platform::copyFile(SPANNORY_TEMPLATE, path);
    {
        const auto database = DBEngine::OpenDatabase(path);
        DetailsTable details(*database);
        database->BeginTrans();
        if (state.range(0) == 0) {
            static_cast<void>(database->TakeIndexes("details"));
        }
        while (state.KeepRunning()) {
            details.rows->AddNew();
            details.fullPath.setText(filePath.substr(2));
            details.drive.setText("/\\");
            details.parentFolder.setText(filePath.substr(0, filePath.rfind('\\') + 1));
            details.size.setNumber(4096);
            details.dateModified.setText("03/14/2026 09:05:17 PM");
            details.isFolder.setInteger(0);
            details.rows->Update();
        }
        database->CommitTrans();
    }
    platform::deleteFile(path);
}
BENCHMARK(rowAppended)->ArgName("indexed")->Arg(0)->Arg(1);

} // namespace

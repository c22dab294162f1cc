#include "support/everyWriter.h"

#include "base/errorLog.h"
#include "export/clsExport.h"
#include "export/databaseFile.h"
#include "export/listWorkbook.h"
#include "export/overviewPage.h"
#include "export/reportFormats.h"
#include "export/reportFrame.h"
#include "platform/files.h"

namespace {

struct OneCell final : modExport::ListTable {
    [[nodiscard]] std::span<const Column> columns() const override { return {&column, 1}; }
    [[nodiscard]] std::size_t rowCount() const override { return 1; }
    [[nodiscard]] std::string_view text(std::size_t /*row*/, std::size_t /*column*/) const override {
        return "cell";
    }
    [[nodiscard]] std::optional<double> number(std::size_t /*row*/, std::size_t /*column*/) const override {
        return {};
    }
    Column column{"Name", Kind::text};
};

} // namespace

EveryWriter::EveryWriter() {
    modGlobal::setErrorLog(&userInterface);
    tree.write("folder/file", "x");
    scan();
}

EveryWriter::~EveryWriter() {
    modGlobal::setErrorLog();
}

std::vector<EveryWriter::Writer> EveryWriter::writers() {
    using modExport::ReportFormat;
    const auto report = [this](ReportFormat format) {
        return [this, format](const std::string& file) {
            clsExport options;
            options.detail = 2;
            modExport::exportReportFile(format, {working.database(), userInterface, settings, options}, file);
        };
    };
    return {{"HTML", report(ReportFormat::html)},
            {"text", report(ReportFormat::text)},
            {"XML", report(ReportFormat::xml)},
            {"Excel", report(ReportFormat::excel)},
            {"overview",
             [this](const std::string& file) {
                 modExport::exportOverview(
                     {working.database(), userInterface, search.gaps, *settings.excludes(), {key()}}, file);
             }},
            {"list",
             [this](const std::string& file) {
                 modGlobal::printToExcel(OneCell(), "Details", userInterface, file);
             }},
            {"database",
             [this](const std::string& file) {
                 if (const auto failure = modExport::copyDatabase(working, file, userInterface)) {
                     userInterface.message(std::to_string(failure->number()) + " " + failure->what());
                 }
             }},
            {"picture", [this](const std::string& file) {
                 try {
                     platform::replaceFile(file, "bytes of a picture");
                 } catch (const RuntimeError& error) {
                     userInterface.message(std::to_string(error.number()) + " " + error.what());
                 }
             }}};
}

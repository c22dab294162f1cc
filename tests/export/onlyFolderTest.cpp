#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "export/reportFormats.h"
#include "platform/locale.h"
#include "platform/paths.h"
#include "support/reportFixture.h"

using modExport::ReportFormat;
using modExport::reportQuery;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

// Reports that are limited to one folder.
class OnlyFolder : public testing::Test {
protected:
    // Each row is smaller than the one before it.
    void add(std::string_view parent, std::string_view name) {
        const auto details = fixture.database->OpenRecordset("details");
        details->AddNew();
        details->Fields("drive").setText(parent.substr(0, parent.find('\\') + 1));
        details->Fields("fullPath").setText(name);
        details->Fields("parentFolder").setText(parent);
        details->Fields("fileName").setText(name);
        details->Fields("isFolder").setInteger(name.ends_with('\\') ? 1 : 0);
        details->Fields("size").setNumber(--size);
        details->Update();
    }

    void addSample() {
        add("/\\", "usr\\");
        add("/\\usr\\", "file");
        add("/\\usr\\", "sub\\");
        add("/\\usr\\sub\\", "deep");
        add("/\\usr\\sub\\", "o'\"quoted\\");
        add("/\\usr\\sub\\o'\"quoted\\", "a");
        add("/\\", "usr2\\");
        add("/\\usr2\\", "b");
        add("/\\", "usr");
        add("/\\usr]\\", "c");
        add("/home\\", "d");
        add("/\\USR\\", "upper");
    }

    [[nodiscard]] std::vector<std::string> names(ReportFormat format, int detail, const char* folder) const {
        std::vector<std::string> result;
        const auto rows = fixture.database->OpenRecordset(reportQuery(format, detail, folder));
        for (; !rows->EndOfFile(); rows->MoveNext()) {
            result.emplace_back(rows->Fields("fileName").text());
        }
        return result;
    }

    ReportFixture fixture;
    int size = 100;
};

TEST_F(OnlyFolder, hasItsOwnRowAndThoseBelow) {
    addSample();
    std::vector<std::string> usr{"usr\\", "file", "sub\\", "deep", "o'\"quoted\\", "a"};
    if (platform::namesIgnoreCase()) {
        usr.emplace_back("upper");
    }
    const struct {
        const char* folder;
        std::vector<std::string> detailed;
        std::vector<std::string> summary;
    } cases[] = {
        {"/\\usr\\", usr, {"usr\\", "sub\\", "o'\"quoted\\"}},
        {"/\\usr\\sub\\o'\"quoted\\", {"o'\"quoted\\", "a"}, {"o'\"quoted\\"}},
        {"/\\usr2\\", {"usr2\\", "b"}, {"usr2\\"}},
        {"/home\\", {"d"}, {}},
        {"/\\\" or \"\"=\"\\", {}, {}},
    };
    for (const ReportFormat format : {ReportFormat::html, ReportFormat::text, ReportFormat::excel}) {
        for (const auto& each : cases) {
            EXPECT_EQ(names(format, 1, each.folder), each.detailed) << each.folder;
            EXPECT_EQ(names(format, 2, each.folder), each.summary) << each.folder;
        }
        EXPECT_EQ(names(format, 1, "/\\").size(), 11U) << "all but those of the other drive";
        EXPECT_EQ(names(format, 1, "").size(), 12U);
    }
}

TEST_F(OnlyFolder, isAskedForByTheOptions) {
    addSample();
    const std::string target = fixture.folder.typed("report");
    const struct {
        bool only;
        const char* folder;
        bool isLimited;
    } cases[] = {{false, "/\\usr2\\", false}, {true, "", false}, {true, "/\\usr2\\", true}};
    const std::string usr2 = platform::displayPath("/\\usr2\\"); // as each system shows it
    const std::string all = platform::displayPath("/\\") + ", " + platform::displayPath("/home\\");
    for (const bool exact : {false, true}) {
        fixture.settings.setExact(exact);
        for (const auto& each : cases) {
            fixture.options.onlyFolder = each.only;
            fixture.options.folder = each.folder;
            modExport::ReportContext context = fixture.context();
            context.scannedFolders = [](Database&, std::size_t) {
                return std::vector<std::string>{"/\\", "/home\\"};
            };
            for (const ReportFormat format : {ReportFormat::html, ReportFormat::text}) {
                EXPECT_TRUE(modExport::exportReportFile(format, context, target));
                EXPECT_EQ(fixture.userInterface.statuses.back().second,
                          "Saved " + target + (each.isLimited ? " (only " + usr2 + ")" : ""));
                EXPECT_EQ(fixture.folder.read("report").find("deep") == std::string::npos, each.isLimited);
            }
            EXPECT_TRUE(modExport::exportReportFile(ReportFormat::html, context, target));
            const std::string html = fixture.folder.read("report");
            const std::string title =
                exact ? "<title>" + (each.isLimited ? usr2 : all) + " - Spannory" : "<TITLE>Spannory";
            EXPECT_THAT(html, HasSubstr(title));
            EXPECT_TRUE(modExport::exportReportFile(ReportFormat::xml, context, target));
            EXPECT_THAT(fixture.folder.read("report"), HasSubstr("deep")) << "it covers everything";
            EXPECT_EQ(fixture.userInterface.statuses.back().second, "Saved " + target);
        }
    }
    EXPECT_THAT(fixture.userInterface.messages, IsEmpty());
}

} // namespace

#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "base/clsSettings.h"
#include "db/dao.h"
#include "export/clsExport.h"
#include "export/reportFrame.h"
#include "platform/files.h"
#include "support/expected.h"
#include "support/recordingInterface.h"
#include "support/temporaryFolder.h"

// One row of the table "details", with the fields that reports show. An empty text is stored as NULL.
struct ReportRow {
    std::string_view path; // without the drive
    double size = 0;
    std::string_view accessed = {};
    std::string_view modified = {};
    std::string_view owner = {};
    bool isFolder = false;
    std::string_view parentFolder = {};
};

// A working database for one test, with everything else that an export needs.
class ReportFixture {
public:
    ReportFixture() {
        platform::copyFile(templateFile(), folder.internal("main.dat"));
        database = DBEngine::OpenDatabase(folder.internal("main.dat"));
        details_ = database->OpenRecordset("details");
        database->BeginTrans();
        options.detail = 1;
    }

    void add(const ReportRow& row) {
        details_->AddNew();
        const std::string drive = testSystem::root();
        const std::pair<const char*, std::string_view> texts[]{{"drive", drive},
                                                               {"fullPath", row.path},
                                                               {"dateAccessed", row.accessed},
                                                               {"dateModified", row.modified},
                                                               {"owner", row.owner},
                                                               {"parentFolder", row.parentFolder}};
        for (const auto& [field, text] : texts) {
            if (!text.empty()) {
                details_->Fields(field).setText(text);
            }
        }
        details_->Fields("size").setNumber(row.size);
        details_->Fields("isFolder").setInteger(row.isFolder ? 1 : 0);
        details_->Update();
    }

    void addMany(int count) {
        for (int i = 0; i < count; ++i) {
            add({"many", 1});
        }
    }

    // The text that a core writer writes.
    template <class Write>
    std::string written(std::string_view query, Write write) {
        platform::TextSink sink;
        modExport::ReportRows rows(context(), query);
        title = rows.title();
        write(rows, sink);
        return sink.text();
    }

    [[nodiscard]] modExport::ReportContext context() { return {*database, userInterface, settings, options}; }

    TemporaryFolder folder;
    std::unique_ptr<Database> database;
    RecordingInterface userInterface;
    clsSettings settings;
    clsExport options;
    std::string title; // of the last report written to memory

private:
    std::unique_ptr<Recordset> details_;
};

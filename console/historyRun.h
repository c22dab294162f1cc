#pragma once

#include <string>
#include <vector>

#include "console/answerRun.h"
#include "export/folderHistory.h"

// A run that tells what saved scans hold of one folder (--history).
class HistoryRun final : public AnswerRun {
public:
    using AnswerRun::AnswerRun;

private:
    void answer() override;
    [[nodiscard]] std::vector<OwnFile> inputs() override;
    void findFiles();
    void show(const modExport::FolderHistory& history);

    std::vector<std::string> files_; // internal paths
};

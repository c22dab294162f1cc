#pragma once

#include <QElapsedTimer>
#include <QProgressBar>
#include <QStatusBar>
#include <cstdint>
#include <string_view>

#include "app/clsUserInterface.h"
#include "app/window/clsDialogs.h"
#include "app/window/statusPanels.h"

// What the core shows and asks, on the main window's status bar, progress bar and pointer.
class WindowInterface final : public clsUserInterface {
public:
    // Nothing is owned; the bars must outlive this.
    WindowInterface(clsDialogs& dialogs, QStatusBar& statusBar, QProgressBar& progressBar);

    void message(std::string_view text) override;
    [[nodiscard]] bool ask(Question question, std::string_view text) override;
    void setBusy(bool busy) override;
    void progressStart(std::int64_t maximum) override;
    void progressStep() override;
    void progressHide() override;
    void status(StatusPanel panel, std::string_view text) override;
    void yieldToEvents() override;
    void openFile(std::string_view path) override;

    // Between the two, one message is shown and the others are counted: a disk full of folders that cannot
    // be recorded is two boxes, not a thousand. What was not shown is in the error log. Ending it again does
    // nothing.
    void beginScan();
    void endScan();

private:
    clsDialogs& dialogs_;
    QProgressBar& progressBar_;
    StatusPanels panels_;
    std::int64_t progressValue_ = 0;
    std::int64_t progressMaximum_ = 0;
    std::int64_t progressPerStep_ = 1; // shown in as many steps as can be told apart
    QElapsedTimer sinceProgress_;      // and not more often than anybody sees
    bool scanning_ = false;
    bool yielding_ = false;
    std::int64_t messages_ = 0; // of the running scan
};

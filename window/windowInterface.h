#pragma once

#include <QElapsedTimer>
#include <QProgressBar>
#include <QStatusBar>
#include <cstdint>
#include <string_view>

#include "base/clsUserInterface.h"
#include "window/dialogs/clsDialogs.h"
#include "window/dialogs/frmWork.h"
#include "window/statusPanels.h"

// The user interface of the window: its messages, status bar, progress bar and pointer.
class WindowInterface final : public clsUserInterface {
public:
    // Nothing is owned; the bars must outlive this.
    WindowInterface(clsDialogs& dialogs, QStatusBar& statusBar, QProgressBar& progressBar);

    void message(std::string_view text) override { messageAbout(text, {}); }
    void messageAbout(std::string_view text, std::string_view subject) override;
    [[nodiscard]] bool ask(Question question, std::string_view text) override;
    [[nodiscard]] bool confirm(Question question, std::string_view text, std::string_view subject) override;
    void setBusy(bool busy) override;
    void progressStart(std::int64_t maximum) override;
    void progressStep() override;
    void progressHide() override;
    void status(StatusPanel panel, std::string_view text) override;
    void yieldToEvents() override;
    void openFile(std::string_view path) override;

    // Between these two, only the first message is shown and the others are counted, so that a disk full of
    // folders that cannot be recorded causes two boxes and not a thousand. The error log has all of them.
    // Calling endScan again does nothing.
    void beginScan();
    void endScan();

    // While an object lives, the work that goes on can be cancelled: if it takes long, a box says so.
    class Cancellable {
    public:
        Cancellable(WindowInterface& interface, const QString& text, QWidget& window);
        ~Cancellable();
        Cancellable(const Cancellable&) = delete;
        Cancellable& operator=(const Cancellable&) = delete;

        [[nodiscard]] bool isCancelled() const noexcept { return box_.isCancelled(); }

    private:
        WindowInterface& interface_;
        frmWork box_;
    };

private:
    clsDialogs& dialogs_;
    QProgressBar& progressBar_;
    StatusPanels panels_;
    std::int64_t progressValue_ = 0;
    std::int64_t progressMaximum_ = 0;
    std::int64_t progressPerStep_ = 1; // for as many steps as can be distinguished
    QElapsedTimer sinceProgress_;      // since the bar was last painted
    frmWork* work_ = nullptr;
    bool scanning_ = false;
    bool yielding_ = false;
    std::int64_t messages_ = 0; // of the running scan
};

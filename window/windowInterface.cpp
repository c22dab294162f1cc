#include "window/windowInterface.h"

#include <QApplication>
#include <algorithm>
#include <utility>

#include "platform/paths.h"
#include "widgets/qtText.h"

namespace {

constexpr int progressSteps = 500;
constexpr int progressPause = 20; // ms between two steps, at least: painting takes time

} // namespace

WindowInterface::WindowInterface(clsDialogs& dialogs, QStatusBar& statusBar, QProgressBar& progressBar)
    : dialogs_(dialogs), progressBar_(progressBar), panels_(statusBar) {
    progressBar_.hide();
}

void WindowInterface::messageAbout(std::string_view text, std::string_view subject) {
    const bool fromScan = scanning_ && !yielding_; // and not from a command used during the scan
    if (fromScan && ++messages_ > 1) {
        return;
    }
    if (subject.empty()) {
        dialogs_.message(QString::fromUtf8(text));
    } else {
        dialogs_.messageAbout(QString::fromUtf8(text), modQt::shownText(subject));
    }
}

bool WindowInterface::ask(Question, std::string_view text) {
    return dialogs_.ask(QString::fromUtf8(text));
}

bool WindowInterface::confirm(Question, std::string_view text, std::string_view subject) {
    return dialogs_.confirm(QString::fromUtf8(text), modQt::shownText(subject));
}

void WindowInterface::setBusy(bool busy) {
    if (busy) {
        QApplication::setOverrideCursor(Qt::BusyCursor);
    } else {
        QApplication::restoreOverrideCursor();
    }
}

void WindowInterface::progressStart(std::int64_t maximum) {
    progressValue_ = 0;
    progressMaximum_ = std::max<std::int64_t>(maximum, 1);
    progressPerStep_ = std::max<std::int64_t>(progressMaximum_ / progressSteps, 1);
    progressBar_.setRange(0, maximum == 0 ? 0 : progressSteps); // 0 shows a bar that moves by itself
    progressBar_.setValue(0);
    progressBar_.show();
    if (work_ != nullptr) {
        work_->setProgress(0, progressBar_.maximum());
    }
    yieldToEvents();
    sinceProgress_.start();
}

void WindowInterface::progressStep() {
    const bool isLast = ++progressValue_ == progressMaximum_;
    if (isLast || (progressValue_ % progressPerStep_ == 0 && sinceProgress_.hasExpired(progressPause))) {
        sinceProgress_.start();
        progressBar_.setValue(static_cast<int>(progressValue_ * progressSteps / progressMaximum_));
        if (work_ != nullptr) {
            work_->setProgress(progressBar_.value(), progressSteps);
        }
        yieldToEvents();
    }
}

void WindowInterface::progressHide() {
    progressBar_.hide();
}

void WindowInterface::status(StatusPanel panel, std::string_view text) {
    panels_.set(panel, text);
}

// Handles user input only during a scan, where it cancels or queues, and while a box holds all input away but
// its own. Anywhere else, or while such input is being handled, it would start work in the middle of other
// work.
void WindowInterface::yieldToEvents() {
    if (work_ != nullptr && !yielding_) {
        work_->showIfLong();
    }
    const bool takesInput = (scanning_ || (work_ != nullptr && work_->isVisible())) && !yielding_;
    const bool wasYielding = std::exchange(yielding_, true);
    QApplication::processEvents(takesInput ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
    yielding_ = wasYielding;
}

void WindowInterface::openFile(std::string_view path) {
    if (!dialogs_.startProgramOf(std::string(path))) {
        status(StatusPanel::folder,
               "No application is associated with " + platform::displayPath(platform::toInternal(path)));
    }
}

WindowInterface::Cancellable::Cancellable(WindowInterface& interface, const QString& text, QWidget& window)
    : interface_(interface), box_(text, &window) {
    interface_.work_ = &box_;
}

WindowInterface::Cancellable::~Cancellable() {
    interface_.work_ = nullptr;
}

// A timer may start a scan while something else handles events; this scan accepts input like any other.
void WindowInterface::beginScan() {
    scanning_ = true;
    yielding_ = false;
    messages_ = 0;
}

void WindowInterface::endScan() {
    if (std::exchange(scanning_, false) && messages_ > 1) {
        message(std::to_string(messages_ - 1) + " more errors occurred during this scan; see the error log.");
    }
}

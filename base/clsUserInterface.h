#pragma once

#include <cstdint>
#include <string_view>

// The kinds of Yes/No questions that the core may ask, so that a user interface without a person can answer
// by kind.
enum class Question { overwriteFile, largeExcelReport, openLargeReport };

// The status bar's panels, numbered as in the window.
enum class StatusPanel { items = 1, throughput = 2, folder = 3, remarks = 4 };

// Everything that the core shows or asks. The window implements it with its controls, the console with the
// terminal, and tests with a recorder; the core does not know which. Implementations do not throw.
class clsUserInterface {
public:
    virtual ~clsUserInterface() = default;

    // Shows a message with an OK button; returns after it has been read.
    virtual void message(std::string_view text) = 0;

    // The same, with what the message is about beside its text, where there is a place for it.
    virtual void messageAbout(std::string_view text, std::string_view /*subject*/) { message(text); }

    // True for Yes.
    [[nodiscard]] virtual bool ask(Question question, std::string_view text) = 0;

    // The same before something is lost, which the subject names beside the text, where there is a place for
    // it. Without a choice, the answer is No.
    [[nodiscard]] virtual bool confirm(Question question, std::string_view text,
                                       std::string_view /*subject*/) {
        return ask(question, text);
    }

    virtual void setBusy(bool busy) = 0;

    // The progress bar. Hidden before progressStart and after progressHide. If the maximum is 0, the amount
    // of work is unknown and the bar only shows activity.
    virtual void progressStart(std::int64_t maximum) = 0;
    virtual void progressStep() = 0;
    virtual void progressHide() = 0;

    // May be called as often as needed; an implementation combines updates.
    virtual void status(StatusPanel panel, std::string_view text) = 0;

    // Handles pending events; called for each folder during a scan, and now and then within a large one.
    virtual void yieldToEvents() = 0;

    // Opens the finished file in its associated application, if there is a desktop.
    virtual void openFile(std::string_view path) = 0;
};

// Shows the busy pointer during a scope.
class BusyPointer {
public:
    explicit BusyPointer(clsUserInterface& userInterface) : userInterface_(userInterface) {
        userInterface_.setBusy(true);
    }
    ~BusyPointer() { userInterface_.setBusy(false); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

private:
    clsUserInterface& userInterface_;
};

// Shows the progress bar during a scope; its maximum may be 0.
class ShownProgress {
public:
    ShownProgress(clsUserInterface& userInterface, std::int64_t maximum) : userInterface_(userInterface) {
        userInterface_.progressStart(maximum);
    }
    ~ShownProgress() { userInterface_.progressHide(); }
    ShownProgress(const ShownProgress&) = delete;
    ShownProgress& operator=(const ShownProgress&) = delete;

    void step() { userInterface_.progressStep(); }

private:
    clsUserInterface& userInterface_;
};

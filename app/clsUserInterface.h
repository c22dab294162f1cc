#pragma once

#include <cstdint>
#include <string_view>

// The Yes/No questions that the core may ask, so that an interface without a person can answer by kind.
enum class Question { overwriteFile, largeExcelReport, openLargeReport };

// The status bar's panels, numbered as on the window.
enum class StatusPanel { items = 1, throughput = 2, folder = 3 };

// All that the core shows to or asks of a person. The window implements it with its controls, the console
// with the terminal, tests with a recorder; nothing in the core knows which. Implementations do not throw.
class clsUserInterface {
public:
    virtual ~clsUserInterface() = default;

    // A message with an OK button; returns when it was read.
    virtual void message(std::string_view text) = 0;

    // True for Yes.
    [[nodiscard]] virtual bool ask(Question question, std::string_view text) = 0;

    virtual void setBusy(bool busy) = 0;

    // The progress bar. Hidden until progressStart, and after progressHide. A maximum of 0 says that it is
    // not known how much there is to do; it then only shows that something is done.
    virtual void progressStart(std::int64_t maximum) = 0;
    virtual void progressStep() = 0;
    virtual void progressHide() = 0;

    // Called as often as the core likes; an implementation coalesces what it shows.
    virtual void status(StatusPanel panel, std::string_view text) = 0;

    // Lets pending events of the person's be handled: called once per folder of a scan.
    virtual void yieldToEvents() = 0;

    // Opens the finished file in its associated program, where there is a desktop to do so.
    virtual void openFile(std::string_view path) = 0;
};

// The busy pointer for the length of a scope.
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

// The progress bar for the length of a scope; its maximum may be 0.
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

#pragma once

#include <QString>

// The modal boxes of the main window, so that tests can answer them.
class clsDialogs {
public:
    virtual ~clsDialogs() = default;

    // A message with an OK button under the program's title.
    virtual void message(const QString& text) = 0;
    // A Yes/No question; true for Yes.
    [[nodiscard]] virtual bool ask(const QString& text) = 0;
    // The About box.
    virtual void about() = 0;
};

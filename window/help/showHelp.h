#pragma once

#include <QString>
#include <QWidget>
#include <memory>

class frmHelp;

// The command that shows the help.
class HelpCommand {
public:
    // The window for which help is shown; not owned.
    explicit HelpCommand(const QWidget& window);
    ~HelpCommand();
    HelpCommand(const HelpCommand&) = delete;
    HelpCommand& operator=(const HelpCommand&) = delete;

    // Shows spannory.chm, beside the program, in the system's viewer; if there is no viewer, shows the
    // program's own help window with the pages beside the program or in its share folder. The viewer or the
    // help window reports a missing file.
    void showHelp();

    // The same for one page, over this window. While it is modal, the help window is its own, because the
    // other one would take no input.
    void showTopic(const QString& page, QWidget& over);

private:
    frmHelp& helpWindow();

    const QWidget& window_;
    std::unique_ptr<frmHelp> helpWindow_; // created when first needed, then reused
};

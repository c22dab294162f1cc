#pragma once

#include <QWidget>
#include <memory>

class frmHelp;

// The command that shows the help's contents.
class HelpCommand {
public:
    // The window on whose behalf help is shown; not owned.
    explicit HelpCommand(const QWidget& window);
    ~HelpCommand();
    HelpCommand(const HelpCommand&) = delete;
    HelpCommand& operator=(const HelpCommand&) = delete;

    // Shows spannory.chm, beside the program, in the system's viewer; where there is none, the program's own
    // help window with the pages beside the program or in its share folder. A file that is missing is told by
    // whichever of them is shown.
    void showHelp();

private:
    const QWidget& window_;
    std::unique_ptr<frmHelp> helpWindow_; // made when first needed, shown again afterwards
};

#pragma once

#include <QDropEvent>
#include <QObject>
#include <QWidget>
#include <functional>
#include <string>
#include <string_view>

#include "base/clsUserInterface.h"
#include "tree/folderSelection.h"
#include "window/pathBox.h"

// Opens what the user names by its path, in the path box, on the command line or by dropping it: a folder is
// scanned, a file is loaded as a saved scan.
class Opening final : public QObject {
    Q_OBJECT

public:
    // Nothing is owned.
    struct Dependencies {
        QWidget& window; // takes what is dropped
        PathBox& pathBox;
        FolderSelection& selection;
        clsUserInterface& userInterface;
        std::function<bool()> mayLoad; // whether the rows may be replaced now
        std::function<void(const std::string& file)> load;
    };

    explicit Opening(Dependencies dependencies);
    ~Opening() override;

    // As if the user had typed the path, but any file is loaded, or refused with the reason. False if there
    // is nothing at that path.
    bool open(std::string_view typedPath);

    // Opens what is typed in the path box. There, a file that is no database counts as no folder.
    void openTyped();

    // Loads the file that the path being opened leads to. False if there is none, or none to be loaded.
    bool takeFile(std::string_view typedPath);

Q_SIGNALS:
    // A path has led to this folder, or it is a drive of this computer.
    void folderOpened(const std::string& key);
    // What was typed in the path box is shown now, though it may still be scanned.
    void typedOpened();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QString draggedPath(const QDropEvent& event) const;
    void go(std::string_view typedPath, bool takesAnyFile);

    Dependencies dependencies_;
    bool takesAnyFile_ = false;
    bool isOpening_ = false; // until a folder is shown
    bool isTyped_ = false;
    std::string missing_; // the last path that led nowhere
};

#pragma once

#include <QLineEdit>
#include <string>

#include "window/folderCompletion.h"

// The box that a path is typed into. It shows the path of the folder on show, and completes what is typed.
class PathBox final : public QLineEdit {
    Q_OBJECT

public:
    explicit PathBox(QWidget* parent = nullptr) : QLineEdit(parent) {}

    // Shows the path of a folder as people see it, unless the user is typing another.
    void showFolder(const std::string& key);

    // The path in the box, as typed; that of the folder on show byte for byte, though the box may be unable
    // to show each of them. What was typed is done with, and may be replaced.
    [[nodiscard]] std::string takePath();

private:
    std::string shownKey_;
    QString shownText_; // its path
    FolderCompletion completion_{*this};
};

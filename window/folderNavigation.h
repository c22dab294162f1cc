#pragma once

#include <QBoxLayout>
#include <QObject>
#include <QShortcut>
#include <QToolButton>
#include <QWidget>
#include <array>
#include <functional>
#include <string>

#include "tree/folderSelection.h"
#include "tree/history.h"
#include "window/menu/popMenu.h"

// The ways from the shown folder to the one above it and to those shown before: buttons, keys, the side
// buttons of a mouse, and items of the View menu.
class FolderNavigation final : public QObject {
    Q_OBJECT

public:
    // Nothing is owned.
    struct Dependencies {
        QWidget& window;
        PopMenu& menu;
        FolderSelection& selection;
        // Goes up inside the active view, which may show a part of the folder; false if it shows all of it.
        std::function<bool()> upInView = [] { return false; };
    };

    explicit FolderNavigation(Dependencies dependencies);
    ~FolderNavigation() override;

    // Back, forward, up.
    void addButtons(QBoxLayout& row);

    void goBack();
    void goForward();
    void goUp();

    // From now on, this folder is shown, or none, and none before it: the tree is another.
    void startAnew(const std::string& key);

    // Enables what leads anywhere; to be called when the menu has been made.
    void update();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow(const std::string& key);
    void go(const std::string& key);

    Dependencies dependencies_;
    History history_;
    std::string shown_;  // the folder's key
    std::string above_;  // of the folder above; empty for none
    bool going_ = false; // until the folder of the history is shown
    QToolButton cmdBack_;
    QToolButton cmdForward_;
    QToolButton cmdUp_;
    std::array<QShortcut, 4> keys_;
};

#pragma once

#include <QMenuBar>
#include <QShortcut>

// The menu bar of the window, always inside it, even on desktops that would show it elsewhere. F10 opens its
// first menu; Qt already handles Alt and the access keys.
class MenuToolbar final : public QMenuBar {
    Q_OBJECT

public:
    explicit MenuToolbar(QWidget* parent = nullptr);

private:
    QShortcut f10_;
};

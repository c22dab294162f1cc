#include "window/menu/menuToolbar.h"

#include <QAction>

MenuToolbar::MenuToolbar(QWidget* parent) : QMenuBar(parent), f10_(QKeySequence(Qt::Key_F10), this) {
    setNativeMenuBar(false);
    connect(&f10_, &QShortcut::activated, this, [this] {
        if (!actions().isEmpty()) {
            setActiveAction(actions().constFirst());
        }
    });
}

#include "app/window/popMenu.h"

#include <QAction>
#include <QMenu>
#include <QWidget>

#include "views/widgets/systemIcons.h"

struct PopMenu::Item {
    QString caption;
    QString key;
    int parentIndex = topLevel;
    bool checked = false;
    QAction action;
    std::unique_ptr<QMenu> menu; // what it opens, once it has items of its own
};

PopMenu::PopMenu(QObject* parent) : QObject(parent) {}

PopMenu::~PopMenu() = default;

void PopMenu::bind(QWidget& window, const ImageList& images) {
    window_ = &window;
    images_ = &images;
}

int PopMenu::addItem(const QString& caption, const QString& helpText, int itemData, int parentIndex,
                     int iconIndex, bool checked, bool enabled, const QString& key) {
    Item* const parent = parentIndex == topLevel ? nullptr : &item(parentIndex);
    Item& added = *items_.emplace_back(std::make_unique<Item>());
    const int index = count();
    added.caption = caption;
    added.key = key;
    added.parentIndex = parentIndex;

    // Found by name below this object.
    added.action.setParent(this);
    added.action.setObjectName(key);
    if (caption == QStringLiteral("-")) {
        added.action.setSeparator(true);
    } else {
        added.action.setText(caption);
    }
    added.action.setStatusTip(helpText);
    added.action.setData(itemData);
    added.action.setEnabled(enabled);
    if (iconIndex != noIcon && images_ != nullptr) {
        added.action.setIcon(images_->image(QString::number(iconIndex)));
    }
    if (checked) {
        setChecked(index, true);
    }
    connect(&added.action, &QAction::triggered, this, [this, index] {
        // Undoes the toggle that Qt makes of a click: the mark is the handler's to set.
        item(index).action.setChecked(item(index).checked);
        Q_EMIT click(index);
    });
    if (parent != nullptr) {
        menuOf(*parent).addAction(&added.action);
    }
    return index;
}

QString PopMenu::caption(int index) const {
    return item(index).caption;
}

QString PopMenu::itemKey(int index) const {
    return item(index).key;
}

int PopMenu::parentIndex(int index) const {
    return item(index).parentIndex;
}

QAction& PopMenu::action(int index) const {
    return item(index).action;
}

bool PopMenu::isChecked(int index) const {
    return item(index).checked;
}

void PopMenu::setChecked(int index, bool checked) {
    Item& changed = item(index);
    changed.checked = checked;
    changed.action.setCheckable(true);
    changed.action.setChecked(checked);
}

bool PopMenu::isEnabled(int index) const {
    return item(index).action.isEnabled();
}

void PopMenu::setEnabled(int index, bool enabled) {
    item(index).action.setEnabled(enabled);
}

void PopMenu::store(const QString& name) {
    stored_.insert(name, topLevelActions());
}

QMenu& PopMenu::popUpMenu() {
    if (!popUp_) {
        popUp_ = std::make_unique<QMenu>(window_);
        popUp_->addActions(topLevelActions());
    }
    return *popUp_;
}

QList<QAction*> PopMenu::topLevelActions() const {
    QList<QAction*> actions;
    for (const auto& each : items_) {
        if (each->parentIndex == topLevel) {
            actions.append(&each->action);
        }
    }
    return actions;
}

QMenu& PopMenu::menuOf(Item& parent) {
    if (!parent.menu) {
        parent.menu = std::make_unique<QMenu>(window_);
        parent.action.setMenu(parent.menu.get());
    }
    return *parent.menu;
}

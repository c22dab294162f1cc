#include "window/menu/popMenu.h"

#include <QAction>
#include <QMenu>
#include <QWidget>
#include <algorithm>

#include "widgets/systemIcons.h"

struct PopMenu::Item {
    QString caption;
    QString key;
    int parentIndex = topLevel;
    bool checked = false;
    QAction action;
    std::unique_ptr<QMenu> menu; // its submenu, once it has items
};

namespace {

// A menu puts what stands behind a tab into its shortcut column.
QString textOf(const PopMenu::NewItem& facts) {
    constexpr QChar tab = u'\t';
    const bool hasTab = facts.shortcut.isEmpty() || facts.caption.endsWith(tab);
    return facts.caption + (hasTab ? QString() : QString(tab)) + facts.shortcut;
}

} // namespace

PopMenu::PopMenu(QObject* parent) : QObject(parent) {}

PopMenu::~PopMenu() = default;

void PopMenu::bind(QWidget& window, const ImageList& images) {
    window_ = &window;
    images_ = &images;
}

int PopMenu::addItem(const NewItem& facts) {
    Item* const parent = facts.parentIndex == topLevel ? nullptr : &item(facts.parentIndex);
    Item& added = *items_.emplace_back(std::make_unique<Item>());
    const int index = count();
    added.caption = facts.caption;
    added.key = facts.key;
    added.parentIndex = facts.parentIndex;

    // So that it can be found by name below this object.
    added.action.setParent(this);
    added.action.setObjectName(facts.key);
    if (facts.caption == QStringLiteral("-")) {
        added.action.setSeparator(true);
    } else {
        added.action.setText(textOf(facts));
    }
    if (facts.takesShortcut) {
        added.action.setShortcut(QKeySequence(facts.shortcut));
        added.action.setAutoRepeat(false);
    }
    added.action.setStatusTip(facts.helpText);
    added.action.setData(facts.itemData);
    added.action.setEnabled(facts.enabled);
    if (facts.iconIndex != noIcon && images_ != nullptr) {
        added.action.setIcon(images_->image(QString::number(facts.iconIndex)));
    }
    if (facts.checked) {
        setChecked(index, true);
    }
    connect(&added.action, &QAction::triggered, this, [this, index] {
        // Undoes Qt's toggle on a click, because the handler sets the mark.
        item(index).action.setChecked(item(index).checked);
        Q_EMIT click(index);
    });
    if (parent != nullptr) {
        menuOf(*parent).addAction(&added.action);
    }
    if (facts.opensMenu) {
        menuOf(added);
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

int PopMenu::indexOf(const QString& key) const {
    const auto found = std::find_if(items_.begin(), items_.end(), [&](const auto& each) {
        return each->key.compare(key, Qt::CaseInsensitive) == 0;
    });
    return found == items_.end() ? 0 : static_cast<int>(found - items_.begin()) + 1;
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

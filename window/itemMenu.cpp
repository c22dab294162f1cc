#include "window/itemMenu.h"

#include <QMenu>
#include <QTimer>
#include <algorithm>
#include <array>
#include <utility>

#include "platform/text.h"
#include "tree/nodeKeys.h"
#include "views/folderFigures.h"
#include "widgets/changesList.h"

namespace {

using Offer = ItemCommands::Offer;

// The former contents of a folder can be looked at.
Offer offerForGone(const ItemCommands::Items& items) {
    Offer offer;
    offer.open = items.size() == 1 && items.front().ends_with('\\');
    offer.copyPath = true;
    return offer;
}

struct Command {
    const char* key;
    bool Offer::*offered;
    void (ItemCommands::*run)(const ItemCommands::Items&);
};

constexpr std::array<Command, 7> commands{{
    {"ItemOpen", &Offer::open, &ItemCommands::open},
    {"ItemShow", &Offer::show, &ItemCommands::showInFileManager},
    {"ItemCopyPath", &Offer::copyPath, &ItemCommands::copyPath},
    {"ItemProperties", &Offer::properties, &ItemCommands::showProperties},
    {"ItemScanAgain", &Offer::scanAgain, &ItemCommands::scanAgain},
    {"ItemTrash", &Offer::trash, &ItemCommands::moveToTrash},
    {"ItemExclude", &Offer::exclude, &ItemCommands::exclude},
}};

const Command* commandOf(std::string_view key) {
    const auto* const found = std::find_if(commands.begin(), commands.end(), [&](const Command& command) {
        return platform::equalIgnoringAsciiCase(key, command.key);
    });
    return found == commands.end() ? nullptr : found;
}

} // namespace

ItemMenu::ItemMenu(const Dependencies& dependencies) : dependencies_(dependencies) {
    for (const auto& [keys, key] :
         {std::pair(Qt::CTRL | Qt::Key_Return, "ItemShow"), std::pair(Qt::CTRL | Qt::Key_Enter, "ItemShow"),
          std::pair(Qt::CTRL | Qt::SHIFT | Qt::Key_C, "ItemCopyPath"),
          std::pair(Qt::ALT | Qt::Key_Return, "ItemProperties"),
          std::pair(Qt::ALT | Qt::Key_Enter, "ItemProperties")}) {
        addKey(QKeySequence(keys), key, dependencies_.window, Qt::WindowShortcut);
    }
    for (QWidget* const where : std::initializer_list<QWidget*>{
             &dependencies_.tree, &dependencies_.views.chart(), &dependencies_.views.treemap()}) {
        addKey(QKeySequence(Qt::Key_Delete), "ItemTrash", *where, Qt::WidgetShortcut);
    }
    for (ListView* const list : dependencies_.views.itemLists()) {
        addKey(QKeySequence(Qt::Key_Delete), "ItemTrash", *list, Qt::WidgetShortcut);
    }
    connect(&dependencies_.tree, &FolderTree::menuRequested, this,
            [this](const std::string& key, const QPoint& place) { popUp(itemsOfTree(key), place); });
    connect(
        &dependencies_.views.chart(), &FolderChart::menuRequested, this,
        [this](int index, const QPoint& place) { popUp(itemsOfChart(index), place, isGoneInChart(index)); });
    connect(&dependencies_.views.treemap(), &Treemap::menuRequested, this,
            [this](const QPoint& place) { popUp(itemsOfTreemap(), place); });
}

ItemMenu::~ItemMenu() = default;

void ItemMenu::addKey(const QKeySequence& keys, const char* key, QWidget& where,
                      Qt::ShortcutContext context) {
    keys_.push_back(std::make_unique<QShortcut>(keys, &where));
    keys_.back()->setContext(context);
    keys_.back()->setAutoRepeat(false);
    connect(keys_.back().get(), &QShortcut::activated, this, [this, key] { run(key); });
}

void ItemMenu::connectMenus() {
    for (int index = 1; index <= dependencies_.cP.count(); ++index) {
        if (dependencies_.cP.itemKey(index) == QStringLiteral("Item")) {
            connect(dependencies_.cP.action(index).menu(), &QMenu::aboutToShow, this,
                    [this] { offer(dependencies_.cP, selectedItems(), isGoneSelected()); });
        }
    }
    for (PopMenu* const menu : {&dependencies_.cPLvw, &dependencies_.cPItem}) {
        // The chosen command runs after the menu has closed.
        connect(&menu->popUpMenu(), &QMenu::aboutToHide, this,
                [this] { QTimer::singleShot(0, this, [this] { isOpened_ = false; }); });
    }
    connect(&dependencies_.cPItem, &PopMenu::click, this,
            [this](int index) { run(dependencies_.cPItem.itemKey(index).toStdString()); });
}

bool ItemMenu::run(std::string_view key) {
    const Command* const command = commandOf(key);
    if (command == nullptr) {
        return false;
    }
    const bool isOpened = std::exchange(isOpened_, false);
    const bool areGone = isOpened ? areOpenedGone_ : isGoneSelected();
    const Items items = isOpened ? std::move(opened_) : selectedItems();
    if (!(offerForGone(items).*command->offered) && areGone) {
        dependencies_.commands.tellGone(items);
        return true;
    }
    if (!isOpened && command->offered == &Offer::trash && isNoneMeant()) {
        return true;
    }
    if (areGone && command->offered == &Offer::open) {
        dependencies_.views.enterFormer(items.front());
        return true;
    }
    (dependencies_.commands.*command->run)(items);
    return true;
}

void ItemMenu::popUpForList(const QPoint& place) {
    const bool isForFiles = showsItems(dependencies_.views.activeList());
    opened_ = isForFiles ? itemsOfList() : Items();
    areOpenedGone_ = isForFiles && isGoneInList();
    isOpened_ = true;
    offer(dependencies_.cPLvw, opened_, areOpenedGone_, isForFiles);
    showCopyKey();
    dependencies_.cPLvw.popUpMenu().popup(place);
}

// With several rows selected, the key copies these.
void ItemMenu::showCopyKey() {
    PopMenu& menu = dependencies_.cPLvw;
    const int copy = menu.indexOf(QStringLiteral("ExportText"));
    const bool isKeyRight = dependencies_.views.activeList()->selectedRows().size() < 2;
    menu.action(copy).setText(menu.caption(copy) + (isKeyRight ? QStringLiteral("\tCtrl+C") : QString()));
}

void ItemMenu::popUp(Items items, const QPoint& place, bool isGone) {
    if (items.empty()) {
        return;
    }
    opened_ = std::move(items);
    areOpenedGone_ = isGone;
    isOpened_ = true;
    offer(dependencies_.cPItem, opened_, isGone);
    dependencies_.cPItem.popUpMenu().popup(place);
}

void ItemMenu::offer(PopMenu& menu, const Items& items, bool areGone, bool isForFiles) {
    Offer offered = areGone ? offerForGone(items) : dependencies_.commands.offerFor(items);
    offered.trash = offered.trash && !(&menu == &dependencies_.cP && isNoneMeant());
    for (int index = 1; index <= menu.count(); ++index) {
        const std::string key = menu.itemKey(index).toStdString();
        const Command* const command = commandOf(key);
        const bool isTrash = key == "ItemTrash" || key == "ItemTrashSpacer";
        if (command != nullptr || isTrash || key == "ItemSpacer") {
            menu.action(index).setVisible(isForFiles && !(isTrash && dependencies_.settings.readOnly()));
        }
        if (command != nullptr) {
            menu.setEnabled(index, offered.*command->offered);
        }
    }
}

// --- Which items are meant -------------------------------------------------------------------------------

ItemMenu::Items ItemMenu::selectedItems() const {
    const QWidget* const focus = dependencies_.window.focusWidget();
    if (showsItems(focus)) {
        return itemsOfList();
    }
    if (focus == &dependencies_.views.chart()) {
        if (Items items = itemsOfChart(dependencies_.views.chart().pointedAt()); !items.empty()) {
            return items;
        }
    }
    if (focus == &dependencies_.views.treemap()) {
        if (!dependencies_.views.treemap().selectedPath().empty()) {
            return itemsOfTreemap();
        }
    }
    return itemsOfTree(dependencies_.tree.selectedKey());
}

// The focus is in a picture of the shown folder, and on none of its items. Commands are for the folder then,
// but for the one that would take away more than anyone has pointed at.
bool ItemMenu::isNoneMeant() const {
    const QWidget* const focus = dependencies_.window.focusWidget();
    return (focus == &dependencies_.views.chart() &&
            itemsOfChart(dependencies_.views.chart().pointedAt()).empty()) ||
           (focus == &dependencies_.views.treemap() && itemsOfTreemap().empty());
}

bool ItemMenu::showsItems(const QWidget* list) const {
    const auto lists = dependencies_.views.itemLists();
    return list != nullptr && std::find(lists.begin(), lists.end(), list) != lists.end();
}

// Of the active tab.
ItemMenu::Items ItemMenu::itemsOfList() const {
    const ListView& list = *dependencies_.views.activeList();
    Items items;
    for (const int row : list.selectedRows()) {
        items.emplace_back(list.rows().row(row).key());
    }
    return items;
}

// Of the active tab: one of them is only in the earlier of two scans.
bool ItemMenu::isGoneInList() const {
    const ListView& list = *dependencies_.views.activeList();
    const std::vector<int> rows = list.selectedRows();
    return std::any_of(rows.begin(), rows.end(),
                       [&](int row) { return modChangesList::isGone(list.rows().row(row).tag()); });
}

bool ItemMenu::isGoneInChart(int index) const {
    const std::string label = dependencies_.views.chart().shownEntry(index).label;
    const std::optional<modChanges::Change> change = dependencies_.views.changeOf(label);
    return change && change->state == modChanges::State::gone;
}

bool ItemMenu::isGoneSelected() const {
    const QWidget* const focus = dependencies_.window.focusWidget();
    return showsItems(focus) ? isGoneInList()
                             : focus == &dependencies_.views.chart() &&
                                   isGoneInChart(dependencies_.views.chart().pointedAt());
}

ItemMenu::Items ItemMenu::itemsOfTree(const std::string& key) {
    return !key.empty() && modNodeKeys::isFolderKey(key) ? Items{key} : Items();
}

// Neither the bar of the files nor the slice for the rest is one item.
ItemMenu::Items ItemMenu::itemsOfChart(int index) const {
    const std::vector<ChartEntry>& entries = dependencies_.views.chart().entries();
    const std::string folder = dependencies_.tree.selectedKey();
    if (index < 0 || static_cast<std::size_t>(index) >= entries.size() || folder.empty() ||
        entries[static_cast<std::size_t>(index)].label == modFigures::filesLabel) {
        return {};
    }
    return {folder + entries[static_cast<std::size_t>(index)].label + "\\"};
}

// What is gathered is not one item.
ItemMenu::Items ItemMenu::itemsOfTreemap() const {
    const std::string path = dependencies_.views.treemap().selectedPath();
    return path.empty() || path.find('|') != std::string::npos ? Items() : Items{path};
}

#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <memory>
#include <vector>

class ImageList;
class QAction;
class QMenu;
class QWidget;

// A tree of menu items, shown on a menu bar or as a pop-up. Items are identified by an index, counted from 1
// in the order in which they are added; keys need not be unique. Each item is a QAction whose object name is
// its key. This object owns the items and their submenus. An index without an item throws std::out_of_range.
class PopMenu final : public QObject {
    Q_OBJECT

public:
    static constexpr int topLevel = 0; // the parent index of items without a parent
    static constexpr int noIcon = -1;

    explicit PopMenu(QObject* parent = nullptr);
    ~PopMenu() override;

    // Sets the window over which the menus open, and the image list for icon indexes (an image's key is the
    // index as decimal text). Call it before adding items; both must outlive this object.
    void bind(QWidget& window, const ImageList& images);

    // The properties of a new item.
    struct NewItem {
        // In QAction's form, with "&" before the access key; it may end in a tab. "-" makes a separator.
        QString caption;
        QString helpText = {}; // for the status bar
        int itemData = 0;      // not used here
        int parentIndex = topLevel;
        int iconIndex = noIcon;
        bool checked = false;
        bool enabled = true;
        QString key = {};
        QString shortcut = {};      // shown beside the caption
        bool takesShortcut = false; // the keys run the item, wherever the focus is in the window
        bool opensMenu = false;     // also if nothing is added to it here
    };

    // Appends an item to its parent, which from then on opens its items, and returns its index.
    int addItem(const NewItem& facts);

    [[nodiscard]] int count() const { return static_cast<int>(items_.size()); }
    [[nodiscard]] QString caption(int index) const; // as added, including a tab
    [[nodiscard]] QString itemKey(int index) const; // as added
    [[nodiscard]] int parentIndex(int index) const;
    [[nodiscard]] QAction& action(int index) const;
    // The first item with this key, ignoring case; 0 for none.
    [[nodiscard]] int indexOf(const QString& key) const;
    // The submenu of an item that opens one. Others may fill it with actions of their own.
    [[nodiscard]] QMenu& menu(int index) { return menuOf(item(index)); }

    // The check mark. Clicks do not change it; the handler sets it. An item becomes checkable when its mark
    // is first set, to either state.
    [[nodiscard]] bool isChecked(int index) const;
    void setChecked(int index, bool checked);

    [[nodiscard]] bool isEnabled(int index) const;
    void setEnabled(int index, bool enabled);

    // Stores the current tree under a name; stored() returns its top-level items, or none for an unknown
    // name.
    void store(const QString& name);
    [[nodiscard]] QList<QAction*> stored(const QString& name) const { return stored_.value(name); }

    // The top-level items as a pop-up menu. It has the items that were added before the first call.
    [[nodiscard]] QMenu& popUpMenu();

Q_SIGNALS:
    // The user chose an item, by mouse or keyboard. Not sent for items with a submenu and for separators.
    void click(int index);

private:
    struct Item;
    [[nodiscard]] Item& item(int index) const { return *items_.at(static_cast<std::size_t>(index) - 1); }
    [[nodiscard]] QList<QAction*> topLevelActions() const;
    QMenu& menuOf(Item& parent);

    QWidget* window_ = nullptr;
    const ImageList* images_ = nullptr;
    std::vector<std::unique_ptr<Item>> items_;
    QHash<QString, QList<QAction*>> stored_;
    std::unique_ptr<QMenu> popUp_;
};

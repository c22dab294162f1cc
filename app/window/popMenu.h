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

// A tree of menu items, shown on a menu bar or popped up. Items are told apart by a running index, from 1 in
// the order of adding; their keys need not differ. Each is a QAction whose object name is its key, owned by
// this object; so are the menus that they open. An index that no item has throws std::out_of_range.
class PopMenu final : public QObject {
    Q_OBJECT

public:
    static constexpr int topLevel = 0; // the parent index of items without a parent
    static constexpr int noIcon = -1;

    explicit PopMenu(QObject* parent = nullptr);
    ~PopMenu() override;

    // Names the window over which the menus open and the list that icon indices refer to (an image's key
    // there is the index as decimal text). Called before items are added; both must live longer than this
    // object.
    void bind(QWidget& window, const ImageList& images);

    // Appends an item to those of its parent, which from now on opens them, and returns its index. The
    // caption is as QAction takes it ("&" before the access key; what follows a tab stands in the shortcut
    // column), "-" makes a separator. The help text is for the status bar; nothing here uses the item data.
    int addItem(const QString& caption, const QString& helpText, int itemData, int parentIndex, int iconIndex,
                bool checked, bool enabled, const QString& key);

    [[nodiscard]] int count() const { return static_cast<int>(items_.size()); }
    [[nodiscard]] QString caption(int index) const; // as added, tab included
    [[nodiscard]] QString itemKey(int index) const; // as added
    [[nodiscard]] int parentIndex(int index) const;
    [[nodiscard]] QAction& action(int index) const;

    // The check mark. Clicks leave it as it is: who handles them sets it. An item takes part in checking from
    // the first time its mark is set, to either state.
    [[nodiscard]] bool isChecked(int index) const;
    void setChecked(int index, bool checked);

    [[nodiscard]] bool isEnabled(int index) const;
    void setEnabled(int index, bool enabled);

    // Keeps the tree as it is now under a name; stored() gives its top-level items, none for an unknown name.
    void store(const QString& name);
    [[nodiscard]] QList<QAction*> stored(const QString& name) const { return stored_.value(name); }

    // The top-level items as one menu, to be popped up at a place. It shows what was added before the first
    // call.
    [[nodiscard]] QMenu& popUpMenu();

Q_SIGNALS:
    // An item was chosen, by mouse or keyboard. Items that open others, and separators, are not reported.
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

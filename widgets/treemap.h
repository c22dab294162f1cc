#pragma once

#include <QImage>
#include <QTimer>
#include <QWidget>
#include <memory>
#include <string>

#include "views/quickSort.h"
#include "views/treemapTree.h"
#include "widgets/chartColours.h"
#include "widgets/treemapScene.h"

// The treemap of a folder (control `tmp`): everything below it as areas as large as their sizes, folders
// framed, files in the colours of their types, with a legend. A click selects an item, a double click or
// Enter enters it; the arrow keys go to its neighbours, Page Up to its folder and Page Down to what is
// largest in it.
class Treemap final : public QWidget {
    Q_OBJECT

public:
    // The largest area that a tree is read for even in a small window: that of a usual screen.
    static constexpr QSize usualSize{1920, 1080};

    explicit Treemap(QWidget* parent = nullptr);

    // The selection stays if the item is in the tree and has a place of its own.
    void setTree(std::shared_ptr<const TreemapTree> tree);
    // Null if there is none.
    [[nodiscard]] const std::shared_ptr<const TreemapTree>& tree() const noexcept { return tree_; }
    // The pixels that a tree must be read for.
    [[nodiscard]] double areaWanted() const;

    // The text shown instead of a tree without items.
    void setHint(const QString& hint);

    // The path of the selected item, empty for none: that of a folder ends in "\", and no item has that of
    // what is gathered (TreemapLayout::pathOf).
    [[nodiscard]] std::string selectedPath() const { return pathOf(selected_); }
    [[nodiscard]] std::string pathOf(int index) const;
    // The folder that is, or holds, the selected item; empty for none.
    [[nodiscard]] std::string selectedFolder() const;

    // For painting it elsewhere.
    [[nodiscard]] TreemapScene sceneFor(const QSizeF& size, const QFont& text) const;

    // --- tiles by index, folders before their contents, 0 for the folder itself ----------------------------
    [[nodiscard]] int selectable() { return static_cast<int>(tiles().size()); }
    [[nodiscard]] static int indexAt(int rank) { return rank; }
    [[nodiscard]] static int rankOf(int index) { return index; }
    // Its place below the folder, and its size; empty if there is none.
    [[nodiscard]] ChartEntry shownEntry(int index);
    [[nodiscard]] static QString valueText(double bytes);
    [[nodiscard]] int entryAt(QPointF place); // -1 for none
    [[nodiscard]] int selected() const noexcept { return selected_; }
    void selectRank(int index) { select(index); }
    void activateSelected();
    // In the widget's coordinates; null if there is none.
    [[nodiscard]] QRectF markOf(int index);

    [[nodiscard]] QSize sizeHint() const override { return {640, 420}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {200, 140}; }

Q_SIGNALS:
    // Another item is selected, or none.
    void itemSelected();
    void itemEntered(const std::string& path);
    // The right button on an item, which it also selects, or the menu key or Shift+F10: the menu's position
    // on the screen.
    void menuRequested(const QPoint& place);
    // There is more room than the tree was read for.
    void roomGrown();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    [[nodiscard]] const std::vector<TreemapTile>& tiles();
    void layOut();
    void forgetPicture();
    void relayout();
    void select(int index);
    void hover(int index);
    void moveByKey(int key);
    [[nodiscard]] int largestItem();
    [[nodiscard]] int keyTarget(int key);
    void startTip(int index, bool atPointer);
    void stopTip();
    void showTip();
    [[nodiscard]] QString tipText(int index);

    std::shared_ptr<const TreemapTree> tree_;
    TreemapColours types_;
    std::vector<TreemapColours::Entry> typeColours_; // of the tree
    ChartColours colours_;
    QString hint_;
    TreemapScene scene_;
    bool isLaidOut_ = false;
    QImage picture_; // painted when needed; while the size changes, that of the size before
    QTimer resizing_;
    int selected_ = -1;
    int hovered_ = -1;
    std::string pressed_; // the path under the pointer when the button was pressed
    std::string clicked_; // the path of the last click
    QTimer tipTimer_;
    int tipped_ = -1;
    bool tipAtPointer_ = false;
};

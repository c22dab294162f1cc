#pragma once

#include <QPixmap>
#include <QPointer>
#include <QScrollBar>
#include <QTimer>
#include <QWidget>
#include <chrono>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "views/chartPaging.h"
#include "views/chartSlices.h"
#include "views/quickSort.h"
#include "widgets/chartHit.h"
#include "widgets/chartLayout.h"
#include "widgets/chartState.h"

// The folder chart (control `tc`): one bar or slice for each entry. At most fifteen bars are shown, the
// largest at the top; the wheel, the scroll bar and the page keys reach the others. A click on a bar
// activates its entry; the arrow keys select a bar, and Enter activates it.
//
// The slice of the rest can be opened: its entries become a pie of their own, which may have a rest too.
class FolderChart : public QWidget {
    Q_OBJECT

public:
    // What happens to the scroll position and the selection when new entries are set.
    enum class View {
        largest, // another folder: show the largest bars, select nothing
        kept,    // the same folder with new figures: keep both; the selection is found by its label
    };

    // The text of a tip for a value in megabytes and the index of its entry (below 0 for several entries).
    using TipProvider = std::function<QString(double megabytes, int index)>;

    static constexpr std::chrono::milliseconds tipDelay{100};

    explicit FolderChart(QWidget* parent = nullptr);

    // The entries are ascending by size; sizes are in bytes and may be negative (modFigures::chartEntries).
    void setEntries(std::vector<ChartEntry> entries, View view = View::largest);
    // All of them, also while only those of a rest are shown.
    [[nodiscard]] const std::vector<ChartEntry>& entries() const { return entries_; }

    void setChartStyle(ChartStyle style);
    [[nodiscard]] ChartStyle chartStyle() const { return style_; }

    // The text shown instead of bars if there are no entries.
    void setHint(const QString& hint);

    // What the entries' sizes are. Changes are shown as bars, and ascending by their amount.
    void setValues(ChartValues values);
    [[nodiscard]] ChartValues values() const { return values_; }

    // The folder's path as it is shown, for the line below the title. Empty for no such line.
    void setFolder(const QString& shownPath);

    // The vertical scroll bar beside the chart (`fsb`), which is not owned. It is hidden if everything is in
    // view.
    void attachScrollBar(QScrollBar* scrollBar);

    void setTipProvider(TipProvider provider) { tipProvider_ = std::move(provider); }
    // How long the pointer or the keyboard selection must stay on something before its tip appears.
    void setTipDelay(std::chrono::milliseconds delay) { tipTimer_.setInterval(delay); }

    // The number of the largest bars scrolled past.
    [[nodiscard]] int position() const { return position_; }
    void setPosition(int position);

    // The number of rests opened inside each other; 0 if everything is shown.
    [[nodiscard]] int depth() const { return static_cast<int>(rests_.size()); }
    // Leaves the innermost rest; false if there is none. Entries of another folder and the bar chart leave
    // all.
    bool up();

    // The entry with the keyboard highlight, ChartSlice::rest for the rest, -1 for none.
    [[nodiscard]] int selected() const { return selected_; }

    // What keys are for: the selected entry or, without one, the one that the pointer has highlighted.
    [[nodiscard]] int pointedAt() const { return selected_ == -1 ? hovered_.index : selected_; }

    // --- bars and slices by rank, largest first -----------------------------------------------------------
    // The number of bars, in view or not, or of slices; behind the entries' own comes the rest's.
    [[nodiscard]] int selectable() const;
    [[nodiscard]] int indexAt(int rank) const;
    [[nodiscard]] int rankOf(int index) const;
    // The entry, or the rest in the form of one; empty if there is neither.
    [[nodiscard]] ChartEntry shownEntry(int index) const;
    [[nodiscard]] QString valueText(double bytes) const;
    // The index of the bar or slice at a place in the widget, -1 for none.
    [[nodiscard]] int entryAt(QPointF place) { return hitAt(place).index; }
    // Selects what has this rank and scrolls to it.
    void selectRank(int rank);
    // Selects the entry with this label, if there is one, and scrolls to it.
    void selectLabel(std::string_view label);
    // Does what Enter does.
    void activateSelected();

    // The widget's current content, for painting it elsewhere (chartPainting::paint). Valid until the next
    // change.
    [[nodiscard]] ChartState state() const;
    // The entry's bar with its mark, or its slice's label, in the widget's coordinates; null if not in view.
    [[nodiscard]] QRectF markOf(int index) { return layoutNow().markOf(index); }

    [[nodiscard]] QSize sizeHint() const override { return {640, 420}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {200, 140}; }

Q_SIGNALS:
    // A click, or Enter.
    void barActivated(const std::string& label);
    // A double click on what the first click has left in its place, or, before barActivated, Enter.
    void barEntered(const std::string& label);
    void depthChanged(int depth);
    // The right button on a bar or slice, or the menu key or Shift+F10 on the selected one: its index, and
    // the menu's position on the screen.
    void menuRequested(int index, const QPoint& place);

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
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    // A rest that has been opened.
    struct Rest {
        int count; // of the entries in and below it
        QString name;
    };

    // The number of entries shown, which are the first.
    [[nodiscard]] int count() const {
        return rests_.empty() ? static_cast<int>(entries_.size()) : rests_.back().count;
    }
    [[nodiscard]] std::span<const ChartEntry> shown() const {
        return std::span(entries_).first(static_cast<std::size_t>(count()));
    }
    [[nodiscard]] std::vector<ChartSlice> slices() const;
    void openRests(int depth);
    void setDepth(int depth, int selected);
    void enter(int index);
    [[nodiscard]] std::string labelAt(int index) const; // empty if there is none
    [[nodiscard]] const ChartLayout& layoutNow();
    [[nodiscard]] ChartPaging paging();
    void relayout();
    void adjustScrollBar();
    void renewBackground();
    void hover(const ChartHit& hit);
    void hoverAgain();
    void select(int index);
    [[nodiscard]] ChartHit hitAt(QPointF point);
    bool moveByKey(int key);
    bool selectFirst();
    void popUpForSelected();
    void startTip(const ChartHit& hit, bool byMouse);
    void stopTip();
    void showTip();
    [[nodiscard]] QString tipText(const ChartHit& hit) const;

    std::vector<ChartEntry> entries_;
    ChartStyle style_ = ChartStyle::bar;
    ChartValues values_ = ChartValues::sizes;
    ChartColours colours_;
    QString hint_;
    QString folder_;
    int position_ = 0;
    int selected_ = -1;
    std::vector<Rest> rests_;
    ChartHit hovered_;
    std::string pressed_; // the label under the pointer when the button was pressed
    std::string clicked_; // the label of the last click; empty if other entries are shown since
    bool headingPressed_ = false;
    int wheelRest_ = 0; // the rest of the wheel's turn, less than one bar
    TipProvider tipProvider_;
    QTimer tipTimer_;
    ChartHit tipped_; // what the tip is or will be shown for
    bool tipAtPointer_ = false;
    QPointer<QScrollBar> scrollBar_;
    std::optional<ChartLayout> layout_; // created when needed
    QPixmap background_;                // created when needed
    QRectF painted_;                    // the plot in it
};

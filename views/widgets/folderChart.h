#pragma once

#include <QPixmap>
#include <QPointer>
#include <QScrollBar>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "views/chartPaging.h"
#include "views/quickSort.h"
#include "views/widgets/chartHit.h"
#include "views/widgets/chartLayout.h"
#include "views/widgets/chartState.h"

// The folder chart (control `tc`): one bar or slice for each entry. Bars are shown largest on top, fifteen at
// most; the wheel, the scroll bar and the page keys reach the others. A click on a bar, or Enter on the one
// selected with the arrow keys, activates its entry.
class FolderChart : public QWidget {
    Q_OBJECT

public:
    // What becomes of the scroll position and the selection when entries are set.
    enum class View {
        largest, // another folder: the largest bars, nothing selected
        kept,    // the same folder with new figures: both stay, the selection by its label
    };

    // The text of a tip, given a value in megabytes and the index of its entry, -1 when it stands for
    // several.
    using TipProvider = std::function<QString(double megabytes, int index)>;

    static constexpr int tipDelay = 100; // milliseconds

    explicit FolderChart(QWidget* parent = nullptr);

    // The entries are ascending by size, which is in bytes and may be negative (modFigures::chartEntries).
    void setEntries(std::vector<ChartEntry> entries, View view = View::largest);
    [[nodiscard]] const std::vector<ChartEntry>& entries() const { return entries_; }

    void setChartStyle(ChartStyle style);
    [[nodiscard]] ChartStyle chartStyle() const { return style_; }

    // What is shown in place of bars when there are no entries.
    void setHint(const QString& hint);

    // The vertical scroll bar beside the chart (`fsb`), which is not owned. It is hidden while all is in
    // view.
    void attachScrollBar(QScrollBar* scrollBar);

    void setTipProvider(TipProvider provider) { tipProvider_ = std::move(provider); }

    // How many of the largest bars are scrolled past.
    [[nodiscard]] int position() const { return position_; }
    void setPosition(int position);

    // The entry with the keyboard's highlight, -1 for none.
    [[nodiscard]] int selected() const { return selected_; }

    // What the widget shows now, for painting it elsewhere (chartPainting::paint). Valid until the next
    // change.
    [[nodiscard]] ChartState state() const;
    // The entry's bar with its mark, or its slice's label, in the widget's coordinates; null when not in
    // view.
    [[nodiscard]] QRectF markOf(int index) { return layoutNow().markOf(index); }

    [[nodiscard]] QSize sizeHint() const override { return {640, 420}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {200, 140}; }

Q_SIGNALS:
    void barActivated(const std::string& label);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    [[nodiscard]] int count() const { return static_cast<int>(entries_.size()); }
    [[nodiscard]] std::string labelAt(int index) const; // empty when there is none
    [[nodiscard]] const ChartLayout& layoutNow();
    [[nodiscard]] ChartPaging paging();
    void relayout();
    void adjustScrollBar();
    void renewBackground();
    void hover(const ChartHit& hit);
    void hoverAgain();
    void select(int index);
    [[nodiscard]] int selectable();
    bool moveByKey(int key);
    void startTip(const ChartHit& hit, bool byMouse);
    void stopTip();
    void showTip();
    [[nodiscard]] QString tipText(const ChartHit& hit) const;

    std::vector<ChartEntry> entries_;
    ChartStyle style_ = ChartStyle::bar;
    QString hint_;
    int position_ = 0;
    int selected_ = -1;
    ChartHit hovered_;
    std::string pressed_; // the label on which the button went down
    int wheelRest_ = 0;   // of the wheel's turn, less than a bar's worth
    TipProvider tipProvider_;
    QTimer tipTimer_;
    ChartHit tipped_; // what the tip is shown for, or will be
    bool tipAtPointer_ = false;
    QPointer<QScrollBar> scrollBar_;
    std::optional<ChartLayout> layout_; // none until it is needed again
    QPixmap background_;                // null until it is needed again
};

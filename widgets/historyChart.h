#pragma once

#include <QString>
#include <QWidget>
#include <functional>
#include <optional>

#include "views/timeChart.h"
#include "widgets/chartColours.h"

// The sizes of folders over time, as lines (control `hst`). The arrow keys select a point, along a line and
// from line to line; a click or Enter activates it.
class HistoryChart final : public QWidget {
    Q_OBJECT

public:
    using Chart = modTimeChart::TimeChart;
    using Place = modTimeChart::Place;

    explicit HistoryChart(QWidget* parent = nullptr);

    // `tipOf` tells about a point, in lines.
    void setChart(Chart chart, std::function<QString(const Place&)> tipOf);
    [[nodiscard]] const Chart& chart() const noexcept { return chart_; }
    void setLineShown(std::size_t line, bool isShown);

    // Nothing if none is selected.
    [[nodiscard]] const std::optional<Place>& selectedPlace() const noexcept { return selected_; }
    // Emits nothing.
    void select(const std::optional<Place>& place);

    // A sample of a line as tall as a text, for the legend.
    [[nodiscard]] QPixmap sampleOf(std::size_t line) const;

    // --- the points that are shown, line by line, for assistive technology -------------------------------
    [[nodiscard]] int selectable() const { return static_cast<int>(chart_.count()); }
    [[nodiscard]] static int indexAt(int rank) { return rank; }
    [[nodiscard]] static int rankOf(int index) { return index; }
    [[nodiscard]] QString nameOf(int index) const;  // the line's, and the date
    [[nodiscard]] QString valueOf(int index) const; // the size
    [[nodiscard]] int entryAt(QPointF place) const; // -1 for none
    [[nodiscard]] int selected() const;             // -1 for none
    void selectRank(int index);
    void activateSelected();
    // In the widget's coordinates.
    [[nodiscard]] QRectF markOf(int index) const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void pointSelected();  // by hand
    void pointActivated(); // the selected one

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    [[nodiscard]] QRectF plot() const;
    [[nodiscard]] std::optional<Place> placeAt(QPointF point) const;
    void hover(const std::optional<Place>& place);
    void selectByHand(const std::optional<Place>& place);
    void showTip(const Place& place);
    void fitAxis();

    Chart chart_;
    std::function<QString(const Place&)> tipOf_;
    ChartColours colours_;
    std::optional<Place> selected_;
    std::optional<Place> hovered_;
    std::optional<Place> pressed_;
};

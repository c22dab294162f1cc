#pragma once

#include <QCheckBox>
#include <QScrollArea>
#include <QVBoxLayout>
#include <memory>
#include <vector>

#include "widgets/historyChart.h"

// The legend of a chart of sizes over time: a box for each line, with a sample of it, which switches it on or
// off.
class HistoryLegend final : public QScrollArea {
    Q_OBJECT

public:
    explicit HistoryLegend(HistoryChart& chart, QWidget* parent = nullptr);

    // Shows the lines of the chart anew. `paths`: what each of them stands for.
    void fill(const QStringList& paths);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void paintSamples();

    HistoryChart& chart_;
    QWidget room_;
    QVBoxLayout layout_{&room_};
    std::vector<std::unique_ptr<QCheckBox>> boxes_;
};

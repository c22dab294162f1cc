// The work of the chart for each redraw, with 10,000 entries, in a window and on a large screen.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <string>
#include <vector>

#include "widgets/folderChart.h"

namespace {

QApplication& application() {
    static int argumentCount = 1;
    static char name[] = "spannory_bench";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication instance(argumentCount, arguments);
    return instance;
}

// A few large folders and a long tail, as in real trees.
std::vector<ChartEntry> entries() {
    constexpr int count = 10000;
    std::vector<ChartEntry> result;
    result.reserve(count);
    for (int i = 0; i < count; ++i) {
        result.push_back({"folder number " + std::to_string(i), 4e10 / (count - i)});
    }
    return result;
}

void redraw(benchmark::State& state, ChartStyle style, bool scrolling) {
    application();
    const QSize size(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    FolderChart chart;
    chart.resize(size);
    chart.setChartStyle(style);
    chart.setEntries(entries());
    QImage image(size, QImage::Format_RGB32);
    int position = 0;
    while (state.KeepRunning()) {
        if (scrolling) {
            chart.setPosition(++position % 5000);
        }
        chart.render(&image, {}, {}, QWidget::DrawChildren);
    }
}

void barsScrolled(benchmark::State& state) {
    redraw(state, ChartStyle::bar, true);
}
BENCHMARK(barsScrolled)->Unit(benchmark::kMillisecond)->Args({900, 600})->Args({3840, 2160});

void pieRedrawn(benchmark::State& state) {
    redraw(state, ChartStyle::pie, false);
}
BENCHMARK(pieRedrawn)->Unit(benchmark::kMillisecond)->Args({900, 600})->Args({3840, 2160});

} // namespace

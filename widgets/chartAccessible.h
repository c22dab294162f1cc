#pragma once

class FolderChart;
class HistoryChart;
class QWidget;
class Treemap;

// What the charts tell assistive technology: the chart, with a child for each bar (largest first, also those
// out of view), slice, tile or point, each with its name, its value and its place.
namespace modChartAccessible {

// Registers this with Qt, once per process; call it before the first chart is asked for its interface.
void install();

// Tells whoever listens that the chart shows other bars, or that another one has the keyboard's highlight.
void tellReplaced(QWidget& chart);
void tellSelected(FolderChart& chart);
void tellSelected(HistoryChart& chart);
void tellSelected(Treemap& treemap);

} // namespace modChartAccessible

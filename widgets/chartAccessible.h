#pragma once

class FolderChart;

// What the folder chart tells assistive technology: the chart, with a child for each bar (largest first, also
// those out of view) or slice, each with its name, its value and its place.
namespace modChartAccessible {

// Registers this with Qt, once per process; call it before the first chart is asked for its interface.
void install();

// Tells whoever listens that the chart shows other bars, or that another one has the keyboard's highlight.
void tellReplaced(FolderChart& chart);
void tellSelected(FolderChart& chart);

} // namespace modChartAccessible

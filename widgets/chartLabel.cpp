#include "widgets/chartLabel.h"

#include "widgets/qtText.h"

QString chartLabel(const ChartEntry& entry) {
    return modQt::shownName(entry.label) + (entry.unfinished ? QStringLiteral("\u2026") : QString());
}

#include "widgets/rowIcons.h"

#include <QElapsedTimer>

#include "widgets/listView.h"
#include "widgets/systemIcons.h"

namespace {

// How long fetching icons may block the window, in milliseconds.
constexpr qint64 longestTick = 50;

} // namespace

void RowIcons::fetch() {
    if (!list_.isVisible()) {
        return;
    }
    const auto [first, last] = list_.rowsInView();
    const auto count = static_cast<unsigned>(last - first + 1);
    QElapsedTimer spent;
    spent.start();
    for (unsigned tried = 0; tried < count && !spent.hasExpired(longestTick); ++tried, ++next_) {
        const int row = first + static_cast<int>(next_ % count);
        const ListRow& shown = list_.rows().row(row);
        if (shown.icon.isEmpty()) {
            list_.rows().setIcon(row, modSystemIcons::getIcon(shown.key(), images_));
        }
    }
}

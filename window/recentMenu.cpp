#include "window/recentMenu.h"

#include <QAction>
#include <QTimer>
#include <string_view>

#include "platform/paths.h"
#include "widgets/qtText.h"

namespace {

using Kind = RecentPlaces::Kind;

// The access keys of the first, second, … entry; Clear has another.
constexpr std::string_view folderKeys = "12345678";
constexpr std::string_view savedScanKeys = "ABCDEFGH";
static_assert(folderKeys.size() == RecentPlaces::most && savedScanKeys.size() == RecentPlaces::most);

} // namespace

void RecentMenu::connectMenu() {
    QMenu& menu = dependencies_.cP.menu(dependencies_.cP.indexOf(QStringLiteral("OpenRecent")));
    menu.setToolTipsVisible(true);
    connect(&menu, &QMenu::aboutToShow, this, [this, &menu] { fill(menu); });
}

void RecentMenu::add(RecentPlaces::Kind kind, std::string_view path) {
    places_.add(kind, path);
    Q_EMIT changed();
}

void RecentMenu::fill(QMenu& menu) {
    menu.clear();
    if (places_.isEmpty()) {
        menu.addAction(QStringLiteral("(none)"))->setEnabled(false);
        return;
    }
    addPlaces(menu, Kind::folder);
    addPlaces(menu, Kind::savedScan);
    QAction* const clear = menu.addAction(QStringLiteral("C&lear"));
    clear->setObjectName(QStringLiteral("ClearRecent"));
    connect(clear, &QAction::triggered, this, [this] {
        places_.clear();
        Q_EMIT changed();
    });
}

void RecentMenu::addPlaces(QMenu& menu, RecentPlaces::Kind kind) {
    const bool isFolder = kind == Kind::folder;
    const int widest = 60 * menu.fontMetrics().averageCharWidth();
    std::size_t number = 0;
    for (const std::string& path : places_.of(kind)) {
        const QString shown = isFolder ? modQt::shownFolder(path) : modQt::shownPath(path);
        QString text = menu.fontMetrics().elidedText(shown, Qt::ElideMiddle, widest);
        text.replace(u'&', QStringLiteral("&&"));
        const char key = (isFolder ? folderKeys : savedScanKeys).at(number++);
        QAction* const item = menu.addAction(QStringLiteral("&%1  ").arg(QLatin1Char(key)) + text);
        item->setObjectName(isFolder ? QStringLiteral("RecentFolder") : QStringLiteral("RecentSavedScan"));
        item->setToolTip(modQt::tip(shown));
        item->setStatusTip(shown);
        // Opening may take long, and the menu may be filled again meanwhile: it begins when the click is
        // over.
        connect(item, &QAction::triggered, this, [this, kind, path] {
            QTimer::singleShot(0, this, [this, kind, path] { choose(kind, path); });
        });
    }
    if (number > 0) {
        menu.addSeparator();
    }
}

void RecentMenu::choose(RecentPlaces::Kind kind, const std::string& path) {
    if (!dependencies_.open(platform::displayPath(path))) {
        places_.remove(kind, path);
        Q_EMIT changed();
    }
}

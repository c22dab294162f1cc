#include "window/figureNotices.h"

#include "base/errorTrap.h"
#include "views/folderSummary.h"
#include "window/menu/menus.h"

namespace {

constexpr std::string_view moduleName = "frmMain";

} // namespace

void FigureNotices::start() {
    if (clsSettings::isExactChosen(dependencies_.store)) {
        return;
    }
    dependencies_.bar.showMessage(
        MessageBar::Topic::firstStart,
        {QStringLiteral("Exact figures count files of 2 GB or more in full, unlike earlier reports."),
         {{QStringLiteral("Use &Exact Figures"), [this] { switchOn(); }},
          {QStringLiteral("&Keep as It Is"), [this] { setExact(false); }}}});
}

void FigureNotices::scanned(const modProcessFiles::ScanResult& result) {
    if (result.wrappedFiles > 0 || dependencies_.bar.holds(MessageBar::Topic::wrappedSizes)) {
        showWrapped();
    }
    if (dependencies_.bar.holds(MessageBar::Topic::lacksSizesOnDisk)) {
        showLacking();
    }
    const Unreadable unreadable = dependencies_.search.gaps.unreadableIn({});
    if (!unreadable.isAny()) {
        dependencies_.bar.dismiss(MessageBar::Topic::unreadable);
    } else if (result.unreadableFolders + result.unreadableFiles > 0 ||
               dependencies_.bar.holds(MessageBar::Topic::unreadable)) {
        dependencies_.bar.showMessage(MessageBar::Topic::unreadable,
                                      {QString::fromStdString(unreadableText(unreadable)),
                                       {{QStringLiteral("&Show"), [this] { showUnreadable(); }}}});
    }
    if (dependencies_.unreadable.isVisible()) {
        fillUnreadable();
    }
}

void FigureNotices::showWrapped() {
    const std::int64_t wrapped = dependencies_.search.gaps.wrappedIn({});
    if (wrapped == 0 || dependencies_.settings.onDisk()) { // what is taken on the disk is counted in full
        dependencies_.bar.dismiss(MessageBar::Topic::wrappedSizes);
        return;
    }
    dependencies_.bar.showMessage(MessageBar::Topic::wrappedSizes,
                                  {QString::fromStdString(modProcessFiles::wrappedText(wrapped)),
                                   {{QStringLiteral("Use &Exact Sizes"), [this] { useExactSizes(); }}}});
}

void FigureNotices::loaded() {
    dependencies_.bar.dismiss(MessageBar::Topic::wrappedSizes);
    dependencies_.bar.dismiss(MessageBar::Topic::unreadable);
    showLacking();
    fillUnreadable();
}

void FigureNotices::showLacking() {
    if (dependencies_.settings.onDisk() && dependencies_.database.lacksSizesOnDisk()) {
        dependencies_.bar.showMessage(MessageBar::Topic::lacksSizesOnDisk,
                                      {QString::fromUtf8(modFigures::lackingText), {}});
    } else {
        dependencies_.bar.dismiss(MessageBar::Topic::lacksSizesOnDisk);
    }
}

void FigureNotices::setExact(bool exact) {
    modGlobal::trapped(moduleName, "setExact", [&] {
        dependencies_.bar.dismiss(MessageBar::Topic::firstStart);
        dependencies_.settings.setExact(exact);
        modMenus::setMark(dependencies_.menu, "ExactFigures", exact);
        dependencies_.views.refreshActiveView(); // dates may have another order
        dependencies_.settings.saveExact(dependencies_.store);
    });
}

void FigureNotices::toggleExact() {
    dependencies_.settings.exact() ? setExact(false) : switchOn();
}

void FigureNotices::switchOn() {
    setExact(true);
    if (dependencies_.selection.hasScans() &&
        dependencies_.dialogs.ask(
            QStringLiteral("Sizes that were already recorded become exact when they are "
                           "scanned again.  Scan again now?"))) {
        useExactSizes();
    }
}

void FigureNotices::useExactSizes() {
    if (!dependencies_.settings.exact()) {
        setExact(true);
    }
    dependencies_.selection.scanAgain();
    showWrapped(); // if it was cancelled
}

void FigureNotices::setOnDisk(bool onDisk) {
    modGlobal::trapped(moduleName, "setOnDisk", [&] {
        dependencies_.settings.setOnDisk(onDisk);
        modMenus::setMark(dependencies_.menu, "SizeOnDisk", onDisk);
        dependencies_.database.setOnDisk(onDisk);
        dependencies_.views.forget();
        Q_EMIT dependencies_.selection.figuresChanged();
        showLacking();
        showWrapped();
        dependencies_.settings.saveOnDisk(dependencies_.store);
    });
}

void FigureNotices::showUnreadable() {
    fillUnreadable();
    dependencies_.unreadable.show();
    dependencies_.unreadable.raise();
    dependencies_.unreadable.activateWindow();
}

void FigureNotices::fillUnreadable() {
    dependencies_.unreadable.fill(dependencies_.search.gaps, dependencies_.selection.holdsLoadedRows());
}

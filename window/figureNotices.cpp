#include "window/figureNotices.h"

#include "base/errorTrap.h"
#include "export/databaseFile.h"
#include "widgets/qtText.h"
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
         {{QStringLiteral("Use &Exact Figures"), [this] { setExact(true); }},
          {QStringLiteral("&Keep as It Is"), [this] { setExact(false); }}}});
}

void FigureNotices::scanned(const modProcessFiles::ScanResult& result) {
    if (result.wrappedFiles > 0) {
        wrapped_ = result.wrappedFiles;
        showWrapped();
    }
    const std::size_t unreadable = dependencies_.search.skipped.unreadableIn({});
    if (unreadable == 0) {
        dependencies_.bar.dismiss(MessageBar::Topic::unreadable);
    } else if (result.unreadableFolders > 0 || dependencies_.bar.holds(MessageBar::Topic::unreadable)) {
        dependencies_.bar.showMessage(MessageBar::Topic::unreadable,
                                      {QString::fromStdString(unreadableText(unreadable)),
                                       {{QStringLiteral("&Show"), [this] { showUnreadable(); }}}});
    }
    if (dependencies_.unreadable.isVisible()) {
        dependencies_.unreadable.fill(dependencies_.search.skipped);
    }
}

void FigureNotices::showWrapped() {
    dependencies_.bar.showMessage(MessageBar::Topic::wrappedSizes,
                                  {QString::fromStdString(modProcessFiles::wrappedText(wrapped_)),
                                   {{QStringLiteral("Use &Exact Sizes"), [this] { useExactSizes(); }}}});
}

void FigureNotices::loaded(std::string_view file) {
    wrapped_ = 0;
    dependencies_.bar.dismiss(MessageBar::Topic::wrappedSizes);
    dependencies_.bar.dismiss(MessageBar::Topic::unreadable);
    dependencies_.bar.showMessage(MessageBar::Topic::savedScan,
                                  {modQt::shownText(modExport::savedScanText(file)), {}});
    dependencies_.unreadable.fill(dependencies_.search.skipped);
}

void FigureNotices::setExact(bool exact) {
    modGlobal::trapped(moduleName, "setExact", [&] {
        dependencies_.bar.dismiss(MessageBar::Topic::firstStart);
        dependencies_.settings.setExact(exact);
        modMenus::setExactMark(dependencies_.menu, exact);
        dependencies_.views.refreshActiveView(); // dates may have another order
        dependencies_.settings.saveExact(dependencies_.store);
    });
}

void FigureNotices::toggleExact() {
    const bool exact = !dependencies_.settings.exact();
    setExact(exact);
    if (exact && dependencies_.selection.hasScans() &&
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
    if (dependencies_.selection.scanAgain()) {
        wrapped_ = 0;
        dependencies_.bar.dismiss(MessageBar::Topic::wrappedSizes);
    } else if (wrapped_ > 0) {
        showWrapped();
    }
}

void FigureNotices::showUnreadable() {
    dependencies_.unreadable.fill(dependencies_.search.skipped);
    dependencies_.unreadable.show();
    dependencies_.unreadable.raise();
    dependencies_.unreadable.activateWindow();
}

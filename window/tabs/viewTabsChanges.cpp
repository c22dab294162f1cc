// What the views show of a comparison.

#include <algorithm>
#include <cmath>

#include "base/formatSize.h"
#include "views/folderFigures.h"
#include "widgets/qtText.h"
#include "window/tabs/viewTabs.h"

namespace {

std::string sizeText(const std::optional<double>& size) {
    return size ? modLvw::formatSize(*size) : "not there";
}

} // namespace

// The tab is there while there is something to show on it.
void ViewTabs::wireChanges() {
    connect(&dependencies_.comparison, &OpenComparison::changed, this, [this] {
        const int tab = XTab_.indexOf(&changes_);
        if (!dependencies_.comparison.isOpen() && tab >= 0) {
            XTab_.removeTab(tab);
        } else if (dependencies_.comparison.isOpen() && tab < 0) {
            XTab_.addTab(&changes_, QStringLiteral("Changes"));
        }
        if (showsChartOfChanges()) {
            setChartOfChanges(dependencies_.comparison.isOpen());
            updateGraph();
        }
    });
    connect(&changes_.list(), &ListView::menuRequested, this, &ViewTabs::menuRequested);
    connect(&changes_.list(), &ListView::copyRequested, this, &ViewTabs::copyRequested);
    connect(&changes_, &ChangesPage::itemActivated, this, &ViewTabs::foundActivated);
}

void ViewTabs::showChanges() {
    XTab_.setCurrentWidget(&changes_);
    changes_.refresh();
    changes_.list().setFocus();
}

bool ViewTabs::listsSavedRows() const {
    const QWidget* const shown = XTab_.currentWidget();
    return dependencies_.comparison.isOpen() && (shown == &changes_ || shown == &find_);
}

void ViewTabs::enterFormer(const std::string& key) {
    showChanges();
    changes_.enterFormer(key);
}

std::string ViewTabs::listedFolder() const {
    return XTab_.currentWidget() == &changes_ ? changes_.shownFolder() : dependencies_.tree.selectedKey();
}

// --- The chart of changes ---------------------------------------------------------------------------------

void ViewTabs::setChartOfChanges(bool shown) {
    const bool isOther = shown != showsChartOfChanges();
    if (shown && isOther) {
        showedTreemap_ = showsTreemap_;
        styleBefore_ = tc_.chartStyle();
    }
    if (shown) {
        setTreemap(false);
        XTab_.setCurrentWidget(&chartPage_);
    }
    if (isOther) {
        tc_.setValues(shown ? ChartValues::changes : ChartValues::sizes);
        if (!shown) {
            tc_.setChartStyle(styleBefore_);
        }
        if (!shown && showedTreemap_) {
            switchTreemap(true);
        }
        chartKey_.clear();
        showHint();
    }
}

void ViewTabs::updateChartOfChanges(const std::string& key) {
    const OpenComparison& open = dependencies_.comparison;
    const bool covers = open.covers(key);
    chartChanges_ = covers ? open.childrenOf(key) : std::vector<modChanges::Change>();
    std::erase_if(chartChanges_, [](const modChanges::Change& each) { return each.change() == 0; });
    std::reverse(chartChanges_.begin(), chartChanges_.end());
    std::vector<ChartEntry> entries;
    entries.reserve(chartChanges_.size());
    for (const modChanges::Change& each : chartChanges_) {
        entries.push_back({std::string(each.nameAlone()), each.change()});
    }
    tc_.setHint(covers ? QStringLiteral("No subfolder has grown or shrunk, and neither have the files.")
                       : QStringLiteral("This folder is not in what was compared."));
    tc_.setFolder(QStringLiteral("Changes in %1").arg(modQt::shownPath(key)));
    tc_.setEntries(std::move(entries),
                   key == chartKey_ ? FolderChart::View::kept : FolderChart::View::largest);
    chartKey_ = key;
}

std::optional<modChanges::Change> ViewTabs::changeOf(std::string_view label) const {
    const auto found =
        std::find_if(chartChanges_.begin(), chartChanges_.end(),
                     [&](const modChanges::Change& each) { return each.nameAlone() == label; });
    return showsChartOfChanges() && found != chartChanges_.end() ? std::optional(*found) : std::nullopt;
}

// The tree does not have a folder that is gone.
void ViewTabs::activateBar(const std::string& label) {
    const std::optional<modChanges::Change> change = changeOf(label);
    if (change && change->state == modChanges::State::gone) {
        enterFormer(change->path());
    } else {
        Q_EMIT barChosen(label);
    }
}

QString ViewTabs::tipOfChange(const modChanges::Change& change) {
    return QString::fromStdString("Before: " + sizeText(change.before) + "\nNow: " + sizeText(change.now) +
                                  "\nChange: " + modLvw::formatChange(change.change()));
}

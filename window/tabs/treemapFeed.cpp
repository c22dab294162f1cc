#include "window/tabs/treemapFeed.h"

#include <memory>
#include <utility>

#include "base/errorTrap.h"

namespace {

using std::chrono::milliseconds;

constexpr milliseconds atOnce{15}; // between two looks at other events
constexpr milliseconds pauseIfBusy{100};

} // namespace

TreemapFeed::TreemapFeed(Dependencies dependencies) : dependencies_(std::move(dependencies)) {
    next_.setSingleShot(true);
    connect(&next_, &QTimer::timeout, this, [this] { readOn(atOnce); });
    connect(&dependencies_.treemap, &Treemap::roomGrown, this, [this] {
        if (!isReading()) {
            show(dependencies_.treemap.tree()->folder());
        }
    });
}

void TreemapFeed::show(const std::string& key) {
    key_ = key;
    spent_ = milliseconds(0);
    isGrowing_ = dependencies_.search.isBulkLoad();
    const double area = dependencies_.treemap.areaWanted();
    if (!isGrowing_) {
        growth_.reset();
        reader_.emplace(key, area,
                        dependencies_.search.processing ? modFigures::ScanState::running
                                                        : modFigures::ScanState::ended);
    } else if (!growth_ || growth_->folder() != key || growth_->area() != area) {
        growth_.emplace(key, area);
    }
    next_.start(0);
}

// The rows, and whether there are indexes, may have changed since the last time.
void TreemapFeed::readOn(milliseconds time) {
    modGlobal::trapped("frmMain", "readTreemap", [&] {
        if (!isReading()) {
            return;
        }
        if (!dependencies_.database.isOpen() || !dependencies_.mayRead()) {
            next_.start(pauseIfBusy);
            return;
        }
        if (isGrowing_ != dependencies_.search.isBulkLoad()) {
            show(std::exchange(key_, {}));
            return;
        }
        const std::string key = std::exchange(key_, {}); // nothing is read on after an error
        const modTreemap::Time start = std::chrono::steady_clock::now();
        const bool isDone = readUntil(start + time);
        spent_ += std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - start);
        if (isDone) {
            hand();
        } else {
            key_ = key;
            next_.start(0);
        }
    });
}

bool TreemapFeed::readUntil(modTreemap::Time end) {
    Database& database = dependencies_.database.database();
    return isGrowing_ ? growth_->readUntil(database, end) : reader_->readUntil(database, end);
}

void TreemapFeed::hand() {
    next_.stop();
    cost_ = spent_;
    dependencies_.treemap.setTree(
        std::make_shared<const TreemapTree>(isGrowing_ ? growth_->tree() : reader_->take()));
    reader_.reset();
}

void TreemapFeed::finish() {
    modGlobal::trapped("frmMain", "readTreemap", [&] {
        if (isReading() && dependencies_.database.isOpen()) {
            key_.clear();
            while (!readUntil(std::chrono::steady_clock::now() + std::chrono::hours(1))) {
            }
            hand();
        }
    });
}

void TreemapFeed::clear() {
    stop();
    dependencies_.treemap.setTree(nullptr);
}

void TreemapFeed::scanBegins() {
    if (isGrowing_) {
        stop();
    }
}

void TreemapFeed::stop() {
    next_.stop();
    key_.clear();
    reader_.reset();
    growth_.reset();
}

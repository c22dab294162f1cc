#include "widgets/treemap.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>
#include <chrono>
#include <utility>

#include "widgets/chartAccessible.h"
#include "widgets/folderChart.h"
#include "widgets/treemapPainter.h"

namespace {

constexpr std::chrono::milliseconds pauseAfterResize{80};

} // namespace

Treemap::Treemap(QWidget* parent)
    : QWidget(parent), hint_(QStringLiteral("No sizes to show. Select a folder in the tree to scan it.")) {
    modChartAccessible::install();
    colours_ = ChartColours::of(palette());
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAccessibleName(QStringLiteral("Treemap"));
    tipTimer_.setSingleShot(true);
    tipTimer_.setInterval(FolderChart::tipDelay);
    connect(&tipTimer_, &QTimer::timeout, this, &Treemap::showTip);
    resizing_.setSingleShot(true);
    resizing_.setInterval(pauseAfterResize);
    connect(&resizing_, &QTimer::timeout, this, &Treemap::relayout);
}

void Treemap::setTree(std::shared_ptr<const TreemapTree> tree) {
    tree_ = std::move(tree);
    typeColours_ = tree_ ? types_.assign(*tree_) : std::vector<TreemapColours::Entry>();
    relayout();
    modChartAccessible::tellReplaced(*this);
}

double Treemap::areaWanted() const {
    const auto areaOf = [](const QSize& size) { return 1.0 * size.width() * size.height(); };
    return std::max(areaOf(usualSize), areaOf(size()));
}

void Treemap::setHint(const QString& hint) {
    if (hint != hint_) {
        hint_ = hint;
        update();
    }
}

TreemapScene Treemap::sceneFor(const QSizeF& size, const QFont& text) const {
    return {tree_, size, text, typeColours_};
}

// --- places ---------------------------------------------------------------------------------------------

const std::vector<TreemapTile>& Treemap::tiles() {
    layOut();
    return scene_.map.tiles();
}

void Treemap::layOut() {
    if (!std::exchange(isLaidOut_, true)) {
        scene_ = TreemapScene(tree_, size(), font(), typeColours_);
    }
}

// The tree, the size or the font is another.
void Treemap::relayout() {
    resizing_.stop();
    const std::string path = selectedPath();
    isLaidOut_ = false;
    layOut();
    const std::uint32_t found = path.empty() ? TreemapTile::none : scene_.map.find(path);
    selected_ = found == TreemapTile::none ? -1 : static_cast<int>(found);
    hovered_ = -1;
    hover(underMouse() ? entryAt(mapFromGlobal(QPointF(QCursor::pos()))) : -1);
    forgetPicture();
    if (!path.empty()) {
        Q_EMIT itemSelected(); // or none any more
    }
}

void Treemap::forgetPicture() {
    picture_ = {};
    update();
}

std::string Treemap::pathOf(int index) const {
    const auto count = static_cast<int>(scene_.map.tiles().size());
    return index >= 0 && index < count ? scene_.map.pathOf(static_cast<std::uint32_t>(index)) : std::string();
}

std::string Treemap::selectedFolder() const {
    return selected_ < 0 ? std::string() : scene_.map.folderOf(static_cast<std::uint32_t>(selected_));
}

QString Treemap::valueText(double bytes) {
    return QString::fromStdString(chartMarkText(bytes / 1024 / 1024));
}

ChartEntry Treemap::shownEntry(int index) {
    if (index < 0 || index >= selectable()) {
        return {};
    }
    const auto tile = static_cast<std::uint32_t>(index);
    return {scene_.placeOf(tile).toStdString(), tiles()[tile].size};
}

int Treemap::entryAt(QPointF place) {
    layOut();
    const std::uint32_t found = scene_.map.at(place.x(), place.y());
    return found == TreemapTile::none ? -1 : static_cast<int>(found);
}

QRectF Treemap::markOf(int index) {
    if (index < 0 || index >= selectable()) {
        return {};
    }
    const TreemapRect& area = tiles()[static_cast<std::size_t>(index)].area;
    return {area.left, area.top, area.width, area.height};
}

// --- painting -------------------------------------------------------------------------------------------

void Treemap::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (resizing_.isActive() && !picture_.isNull()) {
        painter.drawImage(rect(), picture_);
        return;
    }
    layOut();
    if (picture_.isNull() || picture_.devicePixelRatio() != devicePixelRatioF()) {
        picture_ = treemapPainter::picture(scene_, devicePixelRatioF(), colours_);
    }
    painter.drawImage(0, 0, picture_);
    if (tiles().empty()) {
        painter.setFont(scene_.titleFont);
        painter.setPen(QColor::fromRgb(colours_.quietText));
        painter.drawText(QRectF(rect()).adjusted(12, 12, -12, -12), Qt::AlignCenter | Qt::TextWordWrap,
                         hint_);
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    for (const auto& [index, isSelected] : {std::pair(hovered_, false), std::pair(selected_, true)}) {
        if (index > 0 || (index == 0 && isSelected)) {
            treemapPainter::paintMark(painter, tiles()[static_cast<std::size_t>(index)], colours_,
                                      isSelected);
        }
    }
}

// The picture before is stretched until the size stays for a moment.
void Treemap::resizeEvent(QResizeEvent*) {
    stopTip();
    if (picture_.isNull() || !isVisible()) {
        relayout();
    } else {
        resizing_.start();
    }
    if (tree_ && areaWanted() > tree_->area() * 1.05) {
        Q_EMIT roomGrown();
    }
}

void Treemap::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) {
        colours_ = ChartColours::of(palette());
        forgetPicture();
    }
    if (event->type() == QEvent::FontChange) {
        relayout();
    }
    QWidget::changeEvent(event);
}

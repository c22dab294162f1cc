#include "window/tabs/findPage.h"

#include <QApplication>
#include <algorithm>
#include <utility>

#include "base/errorTrap.h"
#include "base/numberFormat.h"
#include "platform/clock.h"
#include "platform/locale.h"
#include "widgets/foundList.h"
#include "widgets/helpTopic.h"
#include "widgets/listPlace.h"
#include "widgets/lvsort.h"

namespace {

constexpr std::string_view moduleName = "frmMain";
constexpr int millisecondsAfterTyping = 200;
constexpr int millisecondsWhileHeld = 100;
constexpr std::chrono::milliseconds piece{12}; // of work, between which the window handles events
constexpr int answersOwnShare =
    20; // while a scan runs, looking takes at most this fraction (1/n) of the time
constexpr int toggledOrder = -1;

std::size_t digestOf(std::span<const ListRow> rows) {
    std::size_t digest = rows.size();
    for (const ListRow& row : rows) {
        for (int column = 0; column < modFoundList::accessed; ++column) {
            constexpr std::size_t spread = 0x9E3779B97F4A7C15U;
            const std::size_t hash =
                std::hash<std::string_view>()(column == 0 ? row.key() : row.cell(column).text);
            digest = (digest ^ hash) * spread + (digest >> 32U);
        }
    }
    return digest;
}

} // namespace

FindPage::FindPage(Dependencies dependencies)
    : dependencies_(std::move(dependencies)), lvwFound_(modFoundList::columns(), &dependencies_.icons),
      icons_(lvwFound_, dependencies_.icons) {
    layOut();
    wire();
}

FindPage::~FindPage() = default;

void FindPage::layOut() {
    setObjectName(QStringLiteral("findPage"));
    bar_.setObjectName(QStringLiteral("findBar"));
    lvwFound_.setObjectName(QStringLiteral("lvwFound"));
    lvwFound_.setAccessibleName(QStringLiteral("Found"));
    lvwFound_.setSelectionMode(QAbstractItemView::ExtendedSelection);
    lvwFound_.setFrameShape(QFrame::NoFrame);
    lvwFound_.setExactDates(true);
    lvwFound_.setSort({true, column_ - 1, 1});
    lblFound_.setObjectName(QStringLiteral("lblFound"));
    lblFound_.setTextFormat(Qt::PlainText);
    lblFound_.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    const int margin = fontMetrics().height() / 4;
    lblFound_.setContentsMargins(margin, 0, margin, margin);
    layout_.setContentsMargins(0, 0, 0, 0);
    layout_.setSpacing(0);
    barRoom_.setWidget(&bar_);
    barRoom_.setWidgetResizable(true);
    barRoom_.setFrameShape(QFrame::NoFrame);
    barRoom_.setFocusPolicy(Qt::NoFocus);
    barRoom_.viewport()->setAutoFillBackground(false);
    bar_.setAutoFillBackground(false);
    bar_.installEventFilter(this);
    layout_.addWidget(&barRoom_);
    layout_.addWidget(&lblFound_);
    layout_.addWidget(&lvwFound_, 1);
    modQt::setHelpTopic(*this, "find.html");
    tmrTyped_.setParent(this);
    tmrTyped_.setObjectName(QStringLiteral("tmrTyped"));
    tmrTyped_.setSingleShot(true);
    tmrTyped_.setInterval(millisecondsAfterTyping);
    tmrFind_.setParent(this);
    tmrFind_.setObjectName(QStringLiteral("tmrFind"));
    tmrFind_.setSingleShot(true);
}

// In a small window, the conditions leave half of the room to the list, and are scrolled.
void FindPage::fitBar() {
    barRoom_.setFixedHeight(std::min(bar_.heightForWidth(width()), height() / 2));
}

void FindPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    fitBar();
}

// The controls know their sizes when they have got their style, and may get another.
bool FindPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) {
        fitBar();
    }
    return QWidget::eventFilter(watched, event);
}

void FindPage::wire() {
    // Also where an access key has taken the focus.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* /*before*/, QWidget* now) {
        if (now != nullptr && bar_.isAncestorOf(now)) {
            barRoom_.ensureWidgetVisible(now, 0, bar_.fontMetrics().height() / 2);
        }
    });
    connect(&bar_, &FindBar::edited, &tmrTyped_, qOverload<>(&QTimer::start));
    connect(&bar_, &FindBar::changed, this, &FindPage::refresh);
    connect(&bar_, &FindBar::presetChosen, this, [this](FindBar::Preset preset) {
        switch (preset) {
        case FindBar::Preset::largest:
            sortBy(modFoundList::size, true);
            break;
        case FindBar::Preset::oldest:
            sortBy(modFoundList::modified, false);
            break;
        case FindBar::Preset::recentlyChanged:
            sortBy(modFoundList::modified, true);
            break;
        case FindBar::Preset::emptyFolders:
            sortBy(modFoundList::folder, false);
            break;
        }
        refresh();
    });
    connect(&dependencies_.comparison, &OpenComparison::changed, this, [this] {
        const bool readsChanges = query_ && query_->conditions().onlyChanged;
        bar_.setHasComparison(dependencies_.comparison.isOpen());
        if (readsChanges) { // which are no longer there
            stop();
        }
        if (isVisible()) {
            refresh();
        }
    });
    connect(&tmrTyped_, &QTimer::timeout, this, &FindPage::refresh);
    connect(&tmrFind_, &QTimer::timeout, this, &FindPage::work);
    // Of more than is shown, another order shows others.
    connect(&lvwFound_, &ListView::columnClicked, this, [this](int column) {
        const ListView::AllRows all(lvwFound_);
        modLvw::lvsort(lvwFound_, column, toggledOrder, false);
        sortBy(lvwFound_.sort().key + 1, lvwFound_.sort().order != 0);
        if (isCut_) {
            refresh();
        }
    });
}

void FindPage::sortBy(int column, bool descending) {
    column_ = column;
    descending_ = descending;
}

modFind::Order FindPage::order() const {
    using By = modFind::Order::By;
    switch (column_) {
    case modFoundList::size:
        return {By::size, descending_};
    case modFoundList::modified:
        return {By::modified, descending_};
    case modFoundList::accessed:
        return {By::accessed, descending_};
    default:
        return {};
    }
}

// --- Finding --------------------------------------------------------------------------------------------

void FindPage::refresh() {
    selectFirst_ = true;
    start();
}

void FindPage::follow() {
    if (!tmrFind_.isActive() && platform::tickCount() - ended_ >= cost_ * answersOwnShare) {
        selectFirst_ = false;
        start();
    }
}

void FindPage::reread() {
    selectFirst_ = selectFirst_ && tmrFind_.isActive();
    start();
}

void FindPage::clear() {
    stop();
    lvwFound_.rows().clear();
    lblFound_.clear();
    shownKey_.clear();
    shownDigest_ = 0;
    isCut_ = false;
}

void FindPage::stop() {
    tmrTyped_.stop();
    tmrFind_.stop();
    query_.reset();
}

void FindPage::start() {
    stop();
    const std::string key = dependencies_.folderKey();
    if (key.empty()) {
        return;
    }
    if (key != shownKey_) {
        clear();
        shownKey_ = key;
    }
    std::optional<modFind::Conditions> conditions = bar_.conditions();
    if (!conditions) {
        lblFound_.setText(bar_.problem());
        return;
    }
    conditions->tellsCaseOfExtensions = dependencies_.settings.caseSensitiveExt();
    query_.emplace(*conditions, order(), key, mostShown);
    cost_ = 0;
    tmrFind_.start(0);
}

void FindPage::work() {
    if (dependencies_.isHeld() || !dependencies_.database.isOpen()) {
        tmrFind_.start(millisecondsWhileHeld);
        return;
    }
    const std::int64_t start = platform::tickCount();
    const bool done = modGlobal::trapped(moduleName, "find", [&] {
        Database& rows = query_->conditions().onlyChanged ? dependencies_.comparison.database()
                                                          : dependencies_.database.database();
        if (!query_->advance(rows, piece)) {
            tmrFind_.start(0);
            return false;
        }
        return true;
    });
    if (done) {
        modGlobal::trapped(moduleName, "showFound", [this] { showAnswer(); });
        query_.reset();
    }
    ended_ = platform::tickCount();
    cost_ += ended_ - start;
}

void FindPage::showAnswer() {
    isCut_ = query_->count() > static_cast<std::int64_t>(query_->items().size());
    lblFound_.setText(answerText());
    std::vector<ListRow> rows = modFoundList::rows(query_->items());
    const std::size_t digest = digestOf(rows);
    const bool isSame =
        digest == shownDigest_ && lvwFound_.rows().allRowCount() == static_cast<int>(rows.size());
    if (isSame && !selectFirst_) {
        return;
    }
    const ListPlace place(lvwFound_);
    const ListView::AllRows all(lvwFound_);
    if (!isSame) {
        lvwFound_.rows().clear();
        lvwFound_.rows().append(std::move(rows));
        shownDigest_ = digest;
    }
    modLvw::lvsort(lvwFound_, column_, descending_ ? 1 : 0, selectFirst_);
    place.restore(lvwFound_);
}

QString FindPage::answerText() const {
    std::string text = modFind::foundText(query_->conditions().kind, query_->count(), query_->size());
    if (isCut_) {
        const modFind::Order& order = query_->order();
        const bool isBySize = order.by == modFind::Order::By::size;
        text += isBySize ? (order.descending ? "; the largest " : "; the smallest ")
                         : (order.descending ? "; the newest " : "; the oldest ");
        text += modFormat::countText(static_cast<double>(query_->items().size())) + " are shown";
    }
    return QString::fromStdString(text + ".");
}

// --- What is remembered ---------------------------------------------------------------------------------

void FindPage::restore(const QSettings& state) {
    const QStringList sort = state.value(QStringLiteral("findSort")).toStringList();
    const int column = sort.value(0).toInt();
    if (column >= modFoundList::name && column <= modFoundList::accessed) {
        sortBy(column, sort.value(1) == QStringLiteral("1"));
        lvwFound_.setSort({true, column_ - 1, descending_ ? 1 : 0});
    }
}

void FindPage::save(QSettings& state) const {
    state.setValue(QStringLiteral("findSort"),
                   QStringList{QString::number(column_), QString::number(descending_ ? 1 : 0)});
}

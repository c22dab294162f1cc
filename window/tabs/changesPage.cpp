#include "window/tabs/changesPage.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/errorTrap.h"
#include "base/numberFormat.h"
#include "widgets/helpTopic.h"
#include "widgets/lvsort.h"
#include "widgets/qtText.h"

namespace {

constexpr std::string_view moduleName = "frmMain";
constexpr int toggledOrder = -1;

} // namespace

ChangesPage::ChangesPage(Dependencies dependencies)
    : dependencies_(std::move(dependencies)), lvwChanges_(modChangesList::columns(), &dependencies_.icons),
      icons_(lvwChanges_, dependencies_.icons) {
    layOut();
    wire();
}

ChangesPage::~ChangesPage() = default;

void ChangesPage::layOut() {
    const int margin = fontMetrics().height() / 4;
    setObjectName(QStringLiteral("changesPage"));
    modQt::setHelpTopic(*this, "changes.html");
    cmdFormerUp_.setObjectName(QStringLiteral("cmdFormerUp"));
    cmdFormerUp_.setText(QStringLiteral("Back"));
    cmdFormerUp_.setToolTip(QStringLiteral("Back to the folder above (Alt+Up, Backspace)"));
    cmdFormerUp_.setAutoRaise(true);
    cmdFormerUp_.hide();
    lblChanges_.setObjectName(QStringLiteral("lblChanges"));
    lblChanges_.setTextFormat(Qt::PlainText);
    lblChanges_.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    lvwChanges_.setObjectName(QStringLiteral("lvwChanges"));
    lvwChanges_.setAccessibleName(QStringLiteral("Changes"));
    lvwChanges_.setSelectionMode(QAbstractItemView::ExtendedSelection);
    lvwChanges_.setFrameShape(QFrame::NoFrame);
    lvwChanges_.setSort({true, column_ - 1, 1});
    head_.setContentsMargins(margin, margin, margin, margin);
    head_.addWidget(&cmdFormerUp_);
    head_.addWidget(&lblChanges_, 1);
    layout_.setContentsMargins(0, 0, 0, 0);
    layout_.setSpacing(0);
    layout_.addLayout(&head_);
    layout_.addWidget(&lvwChanges_, 1);
}

void ChangesPage::wire() {
    connect(&dependencies_.open, &OpenComparison::changed, this, [this] {
        clear();
        if (isVisible()) {
            refresh();
        }
    });
    connect(&cmdFormerUp_, &QToolButton::clicked, this, [this] {
        goUp();
        lvwChanges_.setFocus();
    });
    connect(&lvwChanges_, &ListView::columnClicked, this, [this](int column) {
        const ListView::AllRows all(lvwChanges_);
        modLvw::lvsort(lvwChanges_, column, toggledOrder, false);
        column_ = lvwChanges_.sort().key + 1;
        descending_ = lvwChanges_.sort().order != 0;
    });
    connect(&lvwChanges_, &ListView::itemActivated, this,
            [this](const std::string& key, const std::string& tag) {
                if (tag == "GONEFOLDER") {
                    enterFormer(key);
                } else {
                    Q_EMIT itemActivated(key, tag);
                }
            });
}

void ChangesPage::clear() {
    lvwChanges_.rows().clear();
    lblChanges_.clear();
    cmdFormerUp_.hide();
    selected_.clear();
    shown_.clear();
}

void ChangesPage::refresh() {
    const std::string key = dependencies_.folderKey();
    if (key.empty() || key == selected_) {
        return;
    }
    clear();
    selected_ = key;
    shown_ = key;
    fill({});
}

void ChangesPage::enterFormer(const std::string& key) {
    shown_ = key;
    fill({});
}

bool ChangesPage::goUp() {
    if (shown_ == selected_) {
        return false;
    }
    const std::string left = shown_;
    const std::string above(modChanges::splitKey(left).first);
    const bool isGone = modGlobal::trapped(moduleName, "goUp", [&] {
        const auto change = dependencies_.open.itself(above);
        return change && change->state == modChanges::State::gone;
    });
    shown_ = isGone ? above : selected_;
    fill(left);
    return true;
}

void ChangesPage::fill(const std::string& selectedRow) {
    modGlobal::trapped(moduleName, "showChanges", [&] {
        const ListView::AllRows all(lvwChanges_);
        lvwChanges_.rows().clear();
        std::vector<modChanges::Change> changes;
        if (dependencies_.open.covers(shown_)) {
            changes = dependencies_.open.entriesIn(shown_);
        }
        const QString text = answerText(changes);
        lblChanges_.setText(text);
        lblChanges_.setToolTip(modQt::tip(text));
        cmdFormerUp_.setVisible(shown_ != selected_);
        lvwChanges_.rows().append(modChangesList::rows(changes));
        modLvw::lvsort(lvwChanges_, column_, descending_ ? 1 : 0, true);
        if (const int row = selectedRow.empty() ? -1 : modLvw::itemIndex(selectedRow, lvwChanges_);
            row >= 0) {
            lvwChanges_.selectRow(row);
        }
    });
}

// "3 items have changed: 1 new, 2 grown."
QString ChangesPage::answerText(std::span<const modChanges::Change> changes) const {
    if (!dependencies_.open.isOpen()) {
        return QStringLiteral("Choose File > Compare with Saved Scan to see what has changed since.");
    }
    if (!dependencies_.open.covers(shown_)) {
        return QStringLiteral("%1 is not in what was compared, which is %2. Choose File > Compare with Saved "
                              "Scan to compare it.")
            .arg(modQt::shownFolder(shown_),
                 modQt::shownFolder(dependencies_.open.comparison().request.folder));
    }
    std::array<std::size_t, modChanges::states> counts{};
    for (const modChanges::Change& each : changes) {
        ++counts.at(static_cast<std::size_t>(each.state));
    }
    std::string text = changes.empty() ? "Nothing in this folder has changed"
                       : shown_ == selected_
                           ? modFormat::countedText(static_cast<double>(changes.size()), "item has changed",
                                                    "items have changed")
                           : modFormat::countedText(static_cast<double>(changes.size()), "item", "items");
    for (std::size_t state = 0; state < counts.size(); ++state) {
        if (counts.at(state) > 0) {
            const bool isFirst = text.find(':') == std::string::npos;
            text.append(isFirst ? ": " : ", ")
                .append(modFormat::countText(static_cast<double>(counts.at(state))))
                .append(" ")
                .append(modChanges::stateText(static_cast<modChanges::State>(state)));
        }
    }
    const QString counted = QString::fromStdString(text) + u'.';
    return shown_ == selected_
               ? counted
               : QStringLiteral("Former contents of %1: ").arg(modQt::shownFolder(shown_)) + counted;
}

// --- What is remembered ---------------------------------------------------------------------------------

void ChangesPage::restore(const QSettings& state) {
    const QStringList sort = state.value(QStringLiteral("changesSort")).toStringList();
    const int column = sort.value(0).toInt();
    if (column >= modChangesList::name && column <= modChangesList::balance) {
        column_ = column;
        descending_ = sort.value(1) == QStringLiteral("1");
        lvwChanges_.setSort({true, column_ - 1, descending_ ? 1 : 0});
    }
}

void ChangesPage::save(QSettings& state) const {
    state.setValue(QStringLiteral("changesSort"),
                   QStringList{QString::number(column_), QString::number(descending_ ? 1 : 0)});
}

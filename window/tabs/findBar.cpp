#include "window/tabs/findBar.h"

#include <QHBoxLayout>
#include <algorithm>
#include <memory>

#include "platform/clock.h"
#include "platform/paths.h"
#include "widgets/qtText.h"

namespace {

struct BoxFacts {
    const char* objectName;
    const char* label;
    const char* accessibleName;
    const char* placeholder;
    const char* tip;
    int letters; // that there is room for
};

// In the order of FindBar::Box.
constexpr std::array<BoxFacts, 7> facts{{
    {"txtFindName", "&Name:", "Name to find", "text, or a pattern such as *.iso",
     "Text that is anywhere in the name, or a pattern of the whole name with * (any characters) and ? (one)",
     32},
    {"txtFindLarger", "L&arger than:", "Larger than", "10M", "A size such as 500, 20K, 10M or 1.5G", 7},
    {"txtFindSmaller", "S&maller than:", "Smaller than", "1G", "A size such as 500, 20K, 10M or 1.5G", 7},
    {"txtFindExtension", "E&xtension:", "Extension to find", "txt",
     "The whole extension, or a pattern with * and ?; (none) for files that have an empty one", 9},
    {"txtFindOwner", "O&wner:", "Owner to find", "",
     "The owner's whole name, or a pattern with * and ?; (none) for files without an owner", 12},
    {"txtFindOlder", "&Older than:", "Older than", "30",
     "So many days (30), weeks (2w), months (6m) or years (1y), or a day (mm/dd/yyyy)", 10},
    {"txtFindNewer", "Newe&r than:", "Newer than", "2w",
     "So many days (30), weeks (2w), months (6m) or years (1y), or a day (mm/dd/yyyy)", 10},
}};

} // namespace

FindBar::FindBar(QWidget* parent) : QWidget(parent) {
    const int margin = fontMetrics().height() / 4;
    layout_.setContentsMargins(margin, margin, margin, margin);
    layout_.setSpacing(margin);
    addChoice(cboPreset_, QStringLiteral("cboFindPreset"), QStringLiteral("&Preset:"),
              {QStringLiteral("Largest"), QStringLiteral("Oldest"), QStringLiteral("Recently Changed"),
               QStringLiteral("Empty Folders")},
              QStringLiteral("Conditions and an order that are often wanted"));
    cboPreset_.setPlaceholderText(QStringLiteral("(own conditions)"));
    addChoice(cboKind_, QStringLiteral("cboFindKind"), QStringLiteral("&Look for:"),
              {QStringLiteral("Files"), QStringLiteral("Folders"), QStringLiteral("Empty folders")},
              QStringLiteral("What to find below the selected folder"));
    for (const Box box : {name, larger, smaller, extension, owner}) {
        addBox(box);
    }
    addChoice(cboDate_, QStringLiteral("cboFindDate"), QStringLiteral("&Date:"),
              {QStringLiteral("Modified"), QStringLiteral("Accessed")},
              QStringLiteral("The date that \"older\" and \"newer\" are about"));
    addBox(older);
    addBox(newer);
    addChoice(cboState_, QStringLiteral("cboFindState"), QStringLiteral("Chan&ged:"),
              {QStringLiteral("(no matter)"), QStringLiteral("In any way"), QStringLiteral("New"),
               QStringLiteral("Gone"), QStringLiteral("Grown"), QStringLiteral("Shrunk"),
               QStringLiteral("Touched")},
              QStringLiteral("How it differs from the saved scan that it is compared with"));
    setHasComparison(false);
    cmdClear_.setObjectName(QStringLiteral("cmdFindClear"));
    cmdClear_.setText(QStringLiteral("&Clear"));
    cmdClear_.setToolTip(QStringLiteral("Take all conditions away"));
    cmdClear_.setAutoDefault(false);
    layout_.addWidget(&cmdClear_);
    connect(&cboPreset_, &QComboBox::activated, this,
            [this](int index) { setPreset(static_cast<Preset>(index)); });
    for (QComboBox* const choice : {&cboKind_, &cboDate_, &cboState_}) {
        connect(choice, &QComboBox::activated, this, [this] {
            followKind();
            cboPreset_.setCurrentIndex(-1);
            Q_EMIT changed();
        });
    }
    connect(&cmdClear_, &QPushButton::clicked, this, [this] { setPreset(Preset::largest); });
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void FindBar::add(const QString& label, QWidget& control, const QString& tip) {
    control.setToolTip(tip);
    QWidget& field = fields_.emplace_back();
    QLabel& text = labels_.emplace_back(label);
    text.setBuddy(&control);
    auto row = std::make_unique<QHBoxLayout>();
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(&text);
    row->addWidget(&control);
    field.setLayout(row.release());
    layout_.addWidget(&field);
}

void FindBar::addBox(Box box) {
    const BoxFacts& fact = facts.at(box);
    QLineEdit& edit = boxes_.at(box);
    edit.setObjectName(QString::fromUtf8(fact.objectName));
    edit.setAccessibleName(QString::fromUtf8(fact.accessibleName));
    edit.setPlaceholderText(QString::fromUtf8(fact.placeholder));
    edit.setMaxLength(1000);
    edit.setFixedWidth(edit.fontMetrics().averageCharWidth() * fact.letters +
                       2 * edit.fontMetrics().height());
    add(QString::fromUtf8(fact.label), edit, QString::fromUtf8(fact.tip));
    connect(&edit, &QLineEdit::textChanged, this, [this] {
        if (!isSetting_) {
            cboPreset_.setCurrentIndex(-1);
            Q_EMIT edited();
        }
    });
    connect(&edit, &QLineEdit::returnPressed, this, &FindBar::changed);
}

void FindBar::addChoice(QComboBox& choice, const QString& objectName, const QString& label,
                        const QStringList& texts, const QString& tip) {
    choice.setObjectName(objectName);
    choice.addItems(texts);
    choice.setAccessibleName(QString(label).remove(QLatin1Char('&')).remove(QLatin1Char(':')));
    add(label, choice, tip);
}

std::string FindBar::text(Box box) const {
    return boxes_.at(box).text().toStdString();
}

bool FindBar::isUnderstood(Box box) const {
    const std::string typed = text(box);
    if (boxes_.at(box).text().trimmed().isEmpty()) {
        return true;
    }
    if (box == larger || box == smaller) {
        return modFind::parseSize(typed).has_value();
    }
    return (box != older && box != newer) || modFind::parseMoment(typed, platform::now()).has_value();
}

QString FindBar::problem() const {
    for (const Box box : {larger, smaller, older, newer}) {
        if (!isUnderstood(box)) {
            const bool isSize = box == larger || box == smaller;
            return QStringLiteral("%1: \u201c%2\u201d is no %3.")
                .arg(boxes_.at(box).accessibleName(), modQt::shownText(text(box)),
                     isSize ? QStringLiteral("size such as 500, 20K, 10M or 1.5G")
                            : QStringLiteral("time such as 30 (days), 2w, 6m, 1y or mm/dd/yyyy"));
        }
    }
    return {};
}

std::optional<modFind::Conditions> FindBar::conditions() const {
    if (!problem().isEmpty()) {
        return {};
    }
    const platform::Seconds now = platform::now();
    modFind::Conditions result;
    result.kind = static_cast<modFind::Kind>(cboKind_.currentIndex());
    result.date = static_cast<modFind::Date>(cboDate_.currentIndex());
    result.name = text(name);
    result.larger = modFind::parseSize(text(larger));
    result.smaller = modFind::parseSize(text(smaller));
    result.extension = text(extension);
    result.owner = text(owner);
    if (cboState_.isEnabled() && cboState_.currentIndex() > 0) {
        constexpr int inAnyWay = 1; // behind it, the states but for the first, which is none
        result.onlyChanged = true;
        if (cboState_.currentIndex() > inAnyWay) {
            result.state = static_cast<modChanges::State>(cboState_.currentIndex() - inAnyWay);
        }
    }
    result.older = modFind::parseMoment(text(older), now);
    result.newer = modFind::parseMoment(text(newer), now);
    return result;
}

void FindBar::clear() {
    isSetting_ = true;
    for (QLineEdit& box : boxes_) {
        box.clear();
    }
    cboKind_.setCurrentIndex(0);
    cboDate_.setCurrentIndex(0);
    cboState_.setCurrentIndex(0);
    followKind();
    cboPreset_.setCurrentIndex(-1);
    isSetting_ = false;
}

void FindBar::setOnly(Field field, const std::string& value) {
    clear();
    isSetting_ = true;
    const std::string shown = field == Field::extension ? platform::displayName(value) : value;
    boxes_.at(field == Field::extension ? extension : owner)
        .setText(QString::fromStdString(shown.empty() ? std::string(modFind::none) : shown));
    isSetting_ = false;
    Q_EMIT changed();
}

void FindBar::setPreset(Preset preset) {
    clear();
    isSetting_ = true;
    cboPreset_.setCurrentIndex(static_cast<int>(preset));
    if (preset == Preset::recentlyChanged) {
        boxes_.at(newer).setText(QStringLiteral("7"));
    } else if (preset == Preset::emptyFolders) {
        cboKind_.setCurrentIndex(static_cast<int>(modFind::Kind::emptyFolders));
        followKind();
    }
    isSetting_ = false;
    Q_EMIT presetChosen(preset);
}

void FindBar::setHasComparison(bool has) {
    cboState_.setCurrentIndex(has ? cboState_.currentIndex() : 0);
    cboState_.parentWidget()->setVisible(has);
    followKind();
}

// What is empty is known of what is there now only.
void FindBar::followKind() {
    cboState_.setEnabled(cboKind_.currentIndex() != static_cast<int>(modFind::Kind::emptyFolders) &&
                         !cboState_.parentWidget()->isHidden());
}

void FindBar::focusName() {
    boxes_.at(name).setFocus(Qt::ShortcutFocusReason);
    boxes_.at(name).selectAll();
}

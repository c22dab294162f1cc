#include "window/dialogs/frmSettings.h"

#include <QGroupBox>
#include <QScreen>
#include <QStyle>
#include <algorithm>
#include <array>

#include "db/databaseRemark.h"
#include "platform/fileManager.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/runtimeError.h"
#include "widgets/filesList.h"
#include "widgets/groupLists.h"
#include "widgets/helpTopic.h"
#include "widgets/qtText.h"

using modSettings::Key;
using modSettings::Kind;
using modSettings::Remark;
using modSettings::Topic;

namespace {

struct TopicFacts {
    Topic topic;
    const char* tab;   // the tab of the same name is shared
    const char* group; // empty if the fields stand on the tab itself
};

constexpr std::array<TopicFacts, 7> topics{{
    {Topic::scanning, "&Scanning", ""},
    {Topic::excludes, "Excl&udes", ""},
    {Topic::filesList, "&Lists", "Files && Folders"},
    {Topic::fileTypesList, "&Lists", "File Types"},
    {Topic::ownersList, "&Lists", "Owners"},
    {Topic::files, "&Files", ""},
    {Topic::window, "&Window", ""},
}};

QStringList columnsOf(Topic topic) {
    const auto columns = topic == Topic::filesList       ? FilesList::columns()
                         : topic == Topic::fileTypesList ? GroupLists::fileTypeColumns()
                                                         : GroupLists::ownerColumns();
    QStringList names;
    for (const ListColumn& column : columns) {
        names << QString::fromUtf8(column.header);
    }
    return names;
}

QString captionOf(const SettingField& field) {
    return QString::fromUtf8(field.key().caption.data(), static_cast<qsizetype>(field.key().caption.size()))
        .remove(u'&');
}

} // namespace

// A tab; its fields scroll where the screen is small.
struct frmSettings::Page {
    QString title;
    QScrollArea area;
    QWidget content;
    QVBoxLayout layout{&content};
    std::vector<std::unique_ptr<QGroupBox>> groups;
};

frmSettings::frmSettings(SettingsSheet& sheet, clsDialogs& dialogs, QWidget* parent)
    : QDialog(parent), sheet_(sheet), dialogs_(dialogs), layout_(this) {
    setObjectName(QStringLiteral("frmSettings"));
    modQt::setHelpTopic(*this, "settings.html");
    setWindowTitle(QStringLiteral("Settings"));
    tabs_.setObjectName(QStringLiteral("settingTabs"));
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    tabs_.setIconSize(QSize(side, side));
    layout_.addWidget(&tabs_, 1);
    addPages();
    layOutEnd();
    for (const auto& field : fields_) {
        field->setValue(sheet_.value(field->key()), sheet_.fileText(field->key()));
        setFixed(*field);
        checkField(*field);
    }
    updateEnd();
    const QSize usual = QSize(46, 42) * fontMetrics().height();
    const QSize room = screen()->availableSize() * 0.95;
    if (layout_.minimumSize().width() > room.width()) { // the margins are all that can be spared
        QMargins margins = layout_.contentsMargins();
        margins.setLeft(margins.left() / 4);
        margins.setRight(margins.right() / 4);
        layout_.setContentsMargins(margins);
    }
    resize(usual.boundedTo(room));
    fields_.front()->control().setFocus();
}

frmSettings::~frmSettings() = default;

// --- The controls ---------------------------------------------------------------------------------------

void frmSettings::addPages() {
    for (const TopicFacts& facts : topics) {
        const QString title = QString::fromUtf8(facts.tab);
        if (pages_.empty() || pages_.back()->title != title) {
            Page& page = *pages_.emplace_back(std::make_unique<Page>());
            page.title = title;
            page.area.setWidget(&page.content);
            page.area.setWidgetResizable(true);
            page.area.setFrameShape(QFrame::NoFrame);
            page.area.setFocusPolicy(Qt::NoFocus);
            tabs_.addTab(&page.area, title);
        }
        Page& page = *pages_.back();
        QVBoxLayout* place = &page.layout;
        if (*facts.group != '\0') {
            QGroupBox& group = *page.groups.emplace_back(
                std::make_unique<QGroupBox>(QString::fromUtf8(facts.group), &page.content));
            page.layout.addWidget(&group);
            place = std::make_unique<QVBoxLayout>(&group).release(); // the box owns it
        }
        for (const Key& key : modSettings::keys()) {
            if (key.topic == facts.topic) {
                addField(key, *place);
            }
        }
    }
    for (const auto& page : pages_) {
        if (!page->layout.expandingDirections().testFlag(Qt::Vertical)) {
            page->layout.addStretch(1);
        }
    }
}

void frmSettings::addField(const Key& key, QVBoxLayout& place) {
    SettingField& field = *fields_.emplace_back(SettingField::make(
        key, columnsOf(key.topic), modSettings::defaultOf(key, sheet_.applicationFolder())));
    place.addWidget(&field);
    connect(&field, &SettingField::changed, this, [this, &field] {
        checkField(field);
        updateEnd();
    });
    connect(&field, &SettingField::choiceWanted, this, [this, &field] { chooseFile(field); });
}

// Where the settings are, and the buttons.
void frmSettings::layOutEnd() {
    lblFile_.setText(QStringLiteral("Stored in"));
    txtFile_.setObjectName(QStringLiteral("txtFile"));
    txtFile_.setText(modQt::shownPath(sheet_.file()));
    txtFile_.setReadOnly(true);
    txtFile_.setAccessibleName(QStringLiteral("The file of the settings"));
    txtFile_.setToolTip(modQt::tip(txtFile_.text()));
    cmdShowFile_.setObjectName(QStringLiteral("cmdShowFile"));
    cmdShowFile_.setText(QStringLiteral("Show in File &Manager"));
    cmdShowFile_.setToolTip(QStringLiteral("Selects settings.ini, or shows its folder"));
    lblFileRemark_.setObjectName(QStringLiteral("lblFileRemark"));
    lblComplaint_.setObjectName(QStringLiteral("lblComplaint"));
    for (QLabel* const label : {&lblFileRemark_, &lblComplaint_}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    cmdOK_.setObjectName(QStringLiteral("cmdOK"));
    cmdOK_.setText(QStringLiteral("OK"));
    cmdCancel_.setObjectName(QStringLiteral("cmdCancel"));
    cmdCancel_.setText(QStringLiteral("Cancel"));
    cmdDefaults_.setObjectName(QStringLiteral("cmdDefaults"));
    cmdDefaults_.setText(QStringLiteral("Restore &Defaults"));
    cmdDefaults_.setToolTip(
        QStringLiteral("Fills in the defaults everywhere but in Excludes; OK stores them"));
    for (QPushButton* const button : {&cmdShowFile_, &cmdDefaults_}) {
        button->setAutoDefault(false); // so that Enter means OK
    }
    buttons_.addButton(&cmdDefaults_, QDialogButtonBox::ResetRole);
    buttons_.addButton(&cmdOK_, QDialogButtonBox::AcceptRole);
    buttons_.addButton(&cmdCancel_, QDialogButtonBox::RejectRole);

    fileRow_.addWidget(&lblFile_);
    fileRow_.addWidget(&txtFile_, 1);
    fileRow_.addWidget(&cmdShowFile_);
    layout_.addLayout(&fileRow_);
    layout_.addWidget(&lblFileRemark_);
    layout_.addWidget(&lblComplaint_);
    layout_.addWidget(&buttons_);
    cmdOK_.setDefault(true); // in the box, or Cancel stays the default once it had the focus
    connect(&cmdShowFile_, &QPushButton::clicked, this, &frmSettings::showFile);
    connect(&cmdDefaults_, &QPushButton::clicked, this, &frmSettings::restoreDefaults);
    connect(&buttons_, &QDialogButtonBox::accepted, this, &frmSettings::accept);
    connect(&buttons_, &QDialogButtonBox::rejected, this, &frmSettings::reject);
}

void frmSettings::setFixed(SettingField& field) {
    field.control().setEnabled(sheet_.whyFixed(field.key()).empty());
}

int frmSettings::pageOf(const SettingField& field) const {
    for (int page = 0; page < tabs_.count(); ++page) {
        if (tabs_.widget(page)->isAncestorOf(&field)) {
            return page;
        }
    }
    return 0;
}

void frmSettings::goTo(SettingField& field) {
    Page& page = *pages_.at(static_cast<std::size_t>(pageOf(field)));
    tabs_.setCurrentWidget(&page.area);
    page.area.ensureWidgetVisible(&field);
    field.control().setFocus();
}

// --- What is said about the values -----------------------------------------------------------------------

// As long as a value is the one at hand, the program works with it, so nothing about it is an error.
void frmSettings::checkField(SettingField& field) {
    const Key& key = field.key();
    const std::string value = field.value();
    Remark remark;
    if (const std::string why = sheet_.whyFixed(key); !why.empty()) {
        remark.add(Remark::Weight::note, why);
    } else {
        const bool isAtHand = value == sheet_.value(key);
        const bool isText = isPath(key.kind) || key.kind == Kind::patterns;
        const bool isTyped = isText && !value.empty() && !isAtHand;
        remark = isAtHand ? sheet_.fileRemark(key) : isTyped ? remarkOn(key, value) : Remark();
        if (key.kind == Kind::database && !value.empty()) {
            modDatabase::addRemark(remark, value, sheet_.applicationFolder());
        }
        if (isAtHand) {
            remark.weight = std::min(remark.weight, Remark::Weight::warning);
        }
        const int column = QString::fromStdString(value).toInt();
        if (key.kind == Kind::column && !value.empty() &&
            (column < 1 || column > columnsOf(key.topic).size())) {
            remark.add(Remark::Weight::warning, "The list has no column " + value +
                                                    ", so the default is used. Choose one to replace it.");
        }
    }
    field.setRemark(remark);
}

// A field that keeps OK from being pressed may be on a tab behind.
void frmSettings::updateEnd() {
    QStringList wrong;
    std::vector<Remark::Weight> worst(pages_.size(), Remark::Weight::none);
    for (const auto& field : fields_) {
        Remark::Weight& weight = worst.at(static_cast<std::size_t>(pageOf(*field)));
        weight = std::max(weight, field->weight());
        if (field->weight() == Remark::Weight::error) {
            wrong << captionOf(*field);
        }
    }
    for (std::size_t page = 0; page < pages_.size(); ++page) {
        tabs_.setTabIcon(static_cast<int>(page),
                         worst[page] < Remark::Weight::warning
                             ? QIcon()
                             : style()->standardIcon(worst[page] == Remark::Weight::error
                                                         ? QStyle::SP_MessageBoxCritical
                                                         : QStyle::SP_MessageBoxWarning,
                                                     nullptr, this));
    }
    cmdOK_.setEnabled(wrong.isEmpty());
    lblComplaint_.setText(QStringLiteral("OK needs another value for: ") + wrong.join(QStringLiteral(", ")));
    lblComplaint_.setVisible(!wrong.isEmpty());
    const std::string why = sheet_.whyNotWritable();
    lblFileRemark_.setText(modQt::shownText(why));
    lblFileRemark_.setVisible(!why.empty());
}

// --- The buttons ------------------------------------------------------------------------------------------

void frmSettings::chooseFile(SettingField& field) {
    const bool isDatabase = field.key().kind == Kind::database;
    FileRequest request{isDatabase ? "Databases (*.dat)|*.dat|All Files (*.*)|*.*"
                                   : "Text Files (*.txt)|*.txt|All Files (*.*)|*.*",
                        std::string(field.key().defaultText)};
    try {
        field.setValue(dialogs_.saveFile(request), {});
        field.control().setFocus();
    } catch (const RuntimeError& error) {
        if (error.number() != errorNumber::dialogCancelled) {
            dialogs_.message(QString::fromUtf8(error.what()));
        }
    }
}

void frmSettings::restoreDefaults() {
    for (const auto& field : fields_) {
        const Key& key = field->key();
        if (sheet_.whyFixed(key).empty() && key.kind != Kind::patterns) { // which is nobody's default
            field->setValue(SettingsSheet::standard(key), {});
        }
    }
}

void frmSettings::showFile() {
    const std::string& file = sheet_.file();
    const std::string folder = file.substr(0, file.rfind('\\') + 1);
    if (!platform::showInFileManager(platform::fileExists(file) ? file : folder)) {
        dialogs_.messageAbout(QStringLiteral("There is no file manager that could show this file."),
                              modQt::shownPath(file));
    }
}

void frmSettings::accept() {
    SettingsSheet::Values values;
    for (const auto& field : fields_) {
        checkField(*field); // files may have changed since
        values[field->key().name] = field->value();
    }
    updateEnd();
    const auto wrong = std::find_if(fields_.begin(), fields_.end(), [](const auto& field) {
        return field->weight() == Remark::Weight::error;
    });
    if (wrong != fields_.end()) {
        goTo(**wrong);
        return;
    }
    if (sheet_.store(values).empty()) {
        QDialog::accept();
        return;
    }
    updateEnd();
    const std::string why = sheet_.whyNotWritable();
    dialogs_.messageAbout(
        QStringLiteral("The settings could not be stored in settings.ini. Nothing that you entered is lost: "
                       "make the file writable and press OK again."),
        why.empty() ? modQt::shownPath(sheet_.file()) : modQt::shownText(why));
}

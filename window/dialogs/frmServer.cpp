#include "window/dialogs/frmServer.h"

#include <array>
#include <utility>

#include "base/dateFormat.h"
#include "base/formatSize.h"
#include "base/numberFormat.h"
#include "base/runInBackground.h"
#include "collect/httpClient.h"
#include "collect/server.h"
#include "platform/locale.h"
#include "widgets/helpTopic.h"
#include "widgets/lvsort.h"
#include "widgets/qtText.h"

namespace {

constexpr std::size_t mostScans = 10'000;

constexpr std::array<ListColumn, 5> listColumns{{
    {"Host", "", false, "a machine's name"},
    {"Path", "", false, "/home/somebody/projects/"},
    {"Scanned", "DATETIME", false, "12/28/2028 10:58:58 AM  "},
    {"Size", "SIZE", true, "1,023 bytes "},
    {"Files", "NUMBER", true, "1,234,567 "},
}};

ListRow rowOf(const modCollected::Found& found, std::size_t number) {
    const std::string date =
        modFormat::formatDate(platform::localTime(found.finished), modFormat::storedDatePicture);
    const std::string size = modLvw::formatSize(found.size);
    const std::string files = modFormat::countText(found.files);
    std::array<ListCell, listColumns.size()> cells;
    cells[0].text = found.host;
    cells[1].text = found.path;
    cells[2].text = date;
    cells[3].text = size;
    cells[3].tag = found.size;
    cells[4].text = files;
    cells[4].tag = found.files;
    return {std::to_string(number), "", cells};
}

} // namespace

frmServer::frmServer(const QString& url, clsUserInterface& userInterface, QWidget* parent)
    : QDialog(parent), userInterface_(userInterface), lvwServer_(listColumns, nullptr) {
    setObjectName(QStringLiteral("frmServer"));
    setWindowTitle(QStringLiteral("Load from Server"));
    modQt::setHelpTopic(*this, "machines.html");
    layOut();
    wire();
    txtServer_.setText(url);
    (url.isEmpty() ? txtServer_ : txtPassword_).setFocus();
    updateButtons();
}

void frmServer::layOut() {
    constexpr int characters = 120;
    constexpr int lines = 28;
    resize(characters * fontMetrics().averageCharWidth(), lines * fontMetrics().lineSpacing());
    txtServer_.setObjectName(QStringLiteral("txtServer"));
    txtServer_.setPlaceholderText(QStringLiteral("https://user@host:8443/database"));
    txtServer_.setToolTip(QStringLiteral("The server on which scans are collected"));
    txtPassword_.setObjectName(QStringLiteral("txtPassword"));
    txtPassword_.setEchoMode(QLineEdit::Password);
    txtPassword_.setToolTip(QStringLiteral("The user's password there, if any; it is not kept"));
    form_.addRow(QStringLiteral("Ser&ver:"), &txtServer_);
    form_.addRow(QStringLiteral("&Password:"), &txtPassword_);
    lblServer_.setObjectName(QStringLiteral("lblServer"));
    lblServer_.setTextFormat(Qt::PlainText);
    lblServer_.setWordWrap(true);
    cmdShowScans_.setObjectName(QStringLiteral("cmdShowScans"));
    cmdShowScans_.setText(QStringLiteral("&Show Scans"));
    showRow_.addWidget(&lblServer_, 1);
    showRow_.addWidget(&cmdShowScans_);
    lvwServer_.setObjectName(QStringLiteral("lvwServer"));
    lvwServer_.setAccessibleName(QStringLiteral("Scans on the server"));
    layout_.addLayout(&form_);
    layout_.addLayout(&showRow_);
    layout_.addWidget(&lvwServer_, 1);
    layout_.addWidget(&buttons_);
    buttons_.button(QDialogButtonBox::Ok)->setText(QStringLiteral("&Load"));
}

void frmServer::wire() {
    connect(&cmdShowScans_, &QPushButton::clicked, this, &frmServer::askServer);
    connect(&txtServer_, &QLineEdit::textChanged, this, [this] {
        list({}); // those of another server
        say({});
    });
    connect(&lvwServer_, &ListView::columnClicked, this, [this](int column) {
        constexpr int toggledOrder = -1;
        modLvw::lvsort(lvwServer_, column, toggledOrder, false);
    });
    connect(&lvwServer_, &ListView::itemActivated, this, &QDialog::accept);
    connect(lvwServer_.selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &frmServer::updateButtons);
    connect(&buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(&buttons_, &QDialogButtonBox::rejected, this, &frmServer::reject);
}

// The default button is what comes next.
void frmServer::updateButtons() {
    const bool isChosen = !isReading_ && lvwServer_.selectedRow() >= 0;
    QPushButton& load = *buttons_.button(QDialogButtonBox::Ok);
    load.setEnabled(isChosen);
    load.setDefault(isChosen);
    cmdShowScans_.setEnabled(!isReading_ && !txtServer_.text().trimmed().isEmpty());
    cmdShowScans_.setDefault(!isChosen);
    txtServer_.setReadOnly(isReading_);
    txtPassword_.setReadOnly(isReading_);
}

void frmServer::say(const QString& text) {
    lblServer_.setText(text);
}

// In another thread, because nobody knows when the server answers.
std::vector<modCollected::Found> frmServer::scans() {
    const std::string url = txtServer_.text().trimmed().toStdString();
    const std::string password = txtPassword_.text().toStdString();
    HttpClient client(parseServerUrl(url), password, [this] { return !isCancelled_; });
    return runInBackground(userInterface_, [&] {
        modServer::requireSchema(client);
        return modCollected::list(client, mostScans);
    });
}

void frmServer::askServer() {
    isReading_ = true;
    isCancelled_ = false;
    list({});
    say(QStringLiteral("Reading what is there…"));
    updateButtons();
    QString outcome;
    std::vector<modCollected::Found> found;
    try {
        found = scans();
        const std::string count =
            modFormat::countedText(static_cast<double>(found.size()), "scan.", "scans.");
        outcome = found.empty()               ? QStringLiteral("There is no scan on the server yet.")
                  : found.size() == mostScans ? modQt::shownText("The first " + count)
                                              : modQt::shownText(count);
    } catch (const RuntimeError& error) {
        outcome = modQt::shownText(error.what());
    }
    isReading_ = false;
    list(std::move(found));
    say(outcome);
    updateButtons();
}

void frmServer::list(std::vector<modCollected::Found> scans) {
    scans_ = std::move(scans);
    std::vector<ListRow> rows;
    rows.reserve(scans_.size());
    for (const modCollected::Found& found : scans_) {
        rows.push_back(rowOf(found, rows.size()));
    }
    lvwServer_.rows().clear();
    lvwServer_.rows().append(std::move(rows));
    if (!scans_.empty()) {
        lvwServer_.setSort({});
        lvwServer_.selectRow(0);
        lvwServer_.setFocus();
    }
    updateButtons();
}

ServerScan frmServer::chosen() const {
    const int row = lvwServer_.selectedRow();
    const std::string key(lvwServer_.rows().row(row).key());
    return {txtServer_.text().trimmed().toStdString(), txtPassword_.text().toStdString(),
            scans_.at(std::stoul(key))};
}

void frmServer::reject() {
    if (isReading_) {
        isCancelled_ = true;
    } else {
        QDialog::reject();
    }
}

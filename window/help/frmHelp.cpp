#include "window/help/frmHelp.h"

#include <QFile>
#include <QFileInfo>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTreeWidgetItemIterator>
#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "window/help/helpContents.h"
#include "window/menu/menuIcons.h"

namespace {

constexpr int pageRole = Qt::UserRole;

QString textOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

frmHelp::frmHelp(QString folder, QWidget* parent) : QMainWindow(parent), folder_(std::move(folder)) {
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(QStringLiteral("Spannory Help"));
    setAttribute(Qt::WA_QuitOnClose, false);
    resize(QSize(880, 620).boundedTo(screen()->availableSize() * 0.9));

    buildToolbar();
    buildContents();
    buildKeys();
    txtPage_.setObjectName(QStringLiteral("txtPage"));
    connect(&txtPage_, &QTextBrowser::sourceChanged, this, &frmHelp::pageChanged);
    splitter_.addWidget(&tvwContents_);
    splitter_.addWidget(&txtPage_);
    splitter_.setStretchFactor(1, 1);
    splitter_.setSizes({220, 660});
    splitter_.setChildrenCollapsible(false);
    setCentralWidget(&splitter_);
    goHome();
    txtPage_.setFocus();
}

void frmHelp::buildToolbar() {
    using modMenuIcons::Picture;
    using modMenuIcons::Place;
    const auto add = [this](QAction& action, Picture picture, const QString& text, const QString& key) {
        action.setIcon(modMenuIcons::icon(picture, Place::toolbar));
        action.setText(text);
        action.setShortcut(QKeySequence(key));
        action.setToolTip(QStringLiteral("%1 (%2)").arg(text, key));
        tbrHelp_.addAction(&action);
    };
    add(back_, Picture::back, QStringLiteral("Back"), QStringLiteral("Alt+Left"));
    add(forward_, Picture::forward, QStringLiteral("Forward"), QStringLiteral("Alt+Right"));
    add(home_, Picture::home, QStringLiteral("Home"), QStringLiteral("Alt+Home"));
    back_.setEnabled(false);
    forward_.setEnabled(false);
    connect(&back_, &QAction::triggered, &txtPage_, &QTextBrowser::backward);
    connect(&forward_, &QAction::triggered, &txtPage_, &QTextBrowser::forward);
    connect(&home_, &QAction::triggered, this, &frmHelp::goHome);
    connect(&txtPage_, &QTextBrowser::backwardAvailable, &back_, &QAction::setEnabled);
    connect(&txtPage_, &QTextBrowser::forwardAvailable, &forward_, &QAction::setEnabled);

    space_.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    txtFind_.setObjectName(QStringLiteral("txtFind"));
    txtFind_.setPlaceholderText(QStringLiteral("Find on this page (Ctrl+F)"));
    txtFind_.setClearButtonEnabled(true);
    txtFind_.setMaximumWidth(240);
    txtFind_.addAction(modMenuIcons::icon(Picture::search, Place::toolbar), QLineEdit::LeadingPosition);
    connect(&txtFind_, &QLineEdit::returnPressed, this, [this] { find({}); });

    tbrHelp_.setMovable(false);
    tbrHelp_.setContextMenuPolicy(Qt::PreventContextMenu);
    tbrHelp_.setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    tbrHelp_.addWidget(&space_);
    tbrHelp_.addWidget(&txtFind_);
    addToolBar(&tbrHelp_);
}

void frmHelp::buildContents() {
    tvwContents_.setObjectName(QStringLiteral("tvwContents"));
    tvwContents_.setHeaderHidden(true);
    tvwContents_.setFrameShape(QFrame::NoFrame);
    addContents(textOf(folder_ + QStringLiteral("/spannory.hhc")));
    tvwContents_.expandAll();
    if (tvwContents_.topLevelItemCount() == 0) {
        tvwContents_.hide();
    }
    connect(&tvwContents_, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem* item) {
        if (item != nullptr) {
            showPage(item->data(0, pageRole).toString());
        }
    });
}

void frmHelp::addContents(const QString& text) {
    const int rowHeight = fontMetrics().height() * 3 / 2;
    std::vector<QTreeWidgetItem*> above; // the last entry of each level
    for (const modHelp::ContentsEntry& entry : modHelp::readContents(text)) {
        auto item = std::make_unique<QTreeWidgetItem>(QStringList(entry.title));
        item->setData(0, pageRole, entry.page);
        item->setSizeHint(0, QSize(0, rowHeight));
        above.resize(std::min(above.size(), static_cast<std::size_t>(entry.level)));
        QTreeWidgetItem* const parent = above.empty() ? tvwContents_.invisibleRootItem() : above.back();
        above.push_back(item.get());
        parent->addChild(item.release());
    }
}

void frmHelp::buildKeys() {
    const auto add = [this](const QString& key, const auto& action) {
        const auto* shortcut = std::make_unique<QShortcut>(QKeySequence(key), this).release(); // the window's
        connect(shortcut, &QShortcut::activated, this, action);
    };
    add(QStringLiteral("Escape"), [this] { close(); });
    add(QStringLiteral("Ctrl+W"), [this] { close(); });
    add(QStringLiteral("Ctrl+F"), [this] { goToFind(); });
    add(QStringLiteral("F3"), [this] { find({}); });
    add(QStringLiteral("Shift+F3"), [this] { find(QTextDocument::FindBackward); });
    add(QStringLiteral("Ctrl++"), [this] { txtPage_.zoomIn(); });
    add(QStringLiteral("Ctrl+="), [this] { txtPage_.zoomIn(); });
    add(QStringLiteral("Ctrl+-"), [this] { txtPage_.zoomOut(); });
}

void frmHelp::showPage(const QString& page) {
    const QString path = folder_ + QStringLiteral("/") + page;
    if (!QFileInfo(path).isFile()) {
        showMissing(page);
    } else if (const QUrl url = QUrl::fromLocalFile(path); url != txtPage_.source()) {
        txtPage_.setSource(url);
    }
}

void frmHelp::showMissing(const QString& page) {
    txtPage_.setHtml(
        QStringLiteral("<h1>This help page is missing</h1>"
                       "<p>To restore the help, install Spannory again. Everything else works without it.</p>"
                       "<p>The missing file is <b>%1</b>.</p>")
            .arg((folder_ + QStringLiteral("/") + page).toHtmlEscaped()));
}

void frmHelp::pageChanged(const QUrl& url) {
    setWindowTitle(QStringLiteral("%1 - Spannory Help").arg(txtPage_.documentTitle()));
    const QString page = url.fileName();
    const QSignalBlocker blocker(tvwContents_);
    for (QTreeWidgetItemIterator item(&tvwContents_); *item != nullptr; ++item) {
        if ((*item)->data(0, pageRole).toString() == page) {
            tvwContents_.setCurrentItem(*item);
            return;
        }
    }
}

void frmHelp::goHome() {
    showPage(QStringLiteral("welcome.html"));
}

void frmHelp::goToFind() {
    txtFind_.setFocus();
    txtFind_.selectAll();
}

// At the end of the page, the search continues from its other end.
void frmHelp::find(QTextDocument::FindFlags flags) {
    const QString text = txtFind_.text();
    if (text.isEmpty()) {
        goToFind();
    } else if (!txtPage_.find(text, flags)) {
        txtPage_.moveCursor(flags.testFlag(QTextDocument::FindBackward) ? QTextCursor::End
                                                                        : QTextCursor::Start);
        txtPage_.find(text, flags);
    }
}

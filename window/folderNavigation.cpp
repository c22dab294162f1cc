#include "window/folderNavigation.h"

#include <QApplication>
#include <QMouseEvent>
#include <utility>

#include "base/errorTrap.h"
#include "tree/nodeKeys.h"
#include "widgets/qtText.h"
#include "window/menu/menuIcons.h"
#include "window/menu/menus.h"

namespace {

constexpr std::string_view moduleName = "frmMain";

void lookLike(QToolButton& button, const QString& name, modMenuIcons::Picture picture, const QString& text,
              const QString& keys) {
    button.setObjectName(name);
    button.setIcon(modMenuIcons::icon(picture, modMenuIcons::Place::toolbar));
    button.setAutoRaise(true);
    button.setFocusPolicy(Qt::TabFocus);
    button.setAccessibleName(text);
    button.setToolTip(QStringLiteral("%1 (%2)").arg(text, keys));
}

} // namespace

FolderNavigation::FolderNavigation(Dependencies dependencies)
    : dependencies_(std::move(dependencies)),
      keys_{QShortcut{QKeySequence(Qt::ALT | Qt::Key_Left), &dependencies_.window},
            QShortcut{QKeySequence(Qt::ALT | Qt::Key_Right), &dependencies_.window},
            QShortcut{QKeySequence(Qt::ALT | Qt::Key_Up), &dependencies_.window},
            QShortcut{QKeySequence(Qt::Key_Backspace), &dependencies_.window}} {
    using modMenuIcons::Picture;
    lookLike(cmdBack_, QStringLiteral("cmdBack"), Picture::back, QStringLiteral("Back"),
             QStringLiteral("Alt+Left"));
    lookLike(cmdForward_, QStringLiteral("cmdForward"), Picture::forward, QStringLiteral("Forward"),
             QStringLiteral("Alt+Right"));
    lookLike(cmdUp_, QStringLiteral("cmdUp"), Picture::up, QStringLiteral("Up one level"),
             QStringLiteral("Alt+Up, Backspace"));
    using Way = void (FolderNavigation::*)();
    const std::array<Way, 4> ways{&FolderNavigation::goBack, &FolderNavigation::goForward,
                                  &FolderNavigation::goUp, &FolderNavigation::goUp};
    for (std::size_t i = 0; i < ways.size(); ++i) {
        connect(&keys_.at(i), &QShortcut::activated, this, ways.at(i));
    }
    connect(&cmdBack_, &QToolButton::clicked, this, &FolderNavigation::goBack);
    connect(&cmdForward_, &QToolButton::clicked, this, &FolderNavigation::goForward);
    connect(&cmdUp_, &QToolButton::clicked, this, &FolderNavigation::goUp);
    connect(&dependencies_.selection, &FolderSelection::folderShown, this, &FolderNavigation::follow);
    // A list would take a click with a side button for one on the row below the pointer.
    qApp->installEventFilter(this);
}

FolderNavigation::~FolderNavigation() {
    qApp->removeEventFilter(this);
}

void FolderNavigation::addButtons(QBoxLayout& row) {
    for (QToolButton* button : {&cmdBack_, &cmdForward_, &cmdUp_}) {
        row.addWidget(button);
    }
}

void FolderNavigation::follow(const std::string& key) {
    std::exchange(going_, false) ? history_.correct(key) : history_.visit(key);
    shown_ = key;
    above_ = modNodeKeys::above(key);
    update();
}

void FolderNavigation::startAnew(const std::string& key) {
    history_.clear();
    going_ = false;
    shown_.clear();
    above_.clear();
    if (!key.empty()) {
        follow(key);
    }
    update();
}

void FolderNavigation::update() {
    const auto enable = [this](QToolButton& button, std::string_view item, bool enabled) {
        button.setEnabled(enabled);
        modMenus::setItemEnabled(dependencies_.menu, item, enabled);
    };
    enable(cmdBack_, "GoBack", history_.hasBack());
    enable(cmdForward_, "GoForward", history_.hasForward());
    enable(cmdUp_, "GoUp", !above_.empty());
}

void FolderNavigation::goBack() {
    go(history_.back([this](const std::string& key) { return dependencies_.selection.canShow(key); }));
}

void FolderNavigation::goForward() {
    go(history_.forward([this](const std::string& key) { return dependencies_.selection.canShow(key); }));
}

void FolderNavigation::go(const std::string& key) {
    if (!key.empty()) {
        going_ = true;
        dependencies_.selection.showFolder(key);
        going_ = false;
    }
    update();
}

void FolderNavigation::goUp() {
    if (dependencies_.upInView()) {
        return;
    }
    if (const std::string key = above_; !key.empty()) { // above_ changes as soon as it is shown
        dependencies_.selection.showFolder(key);
    }
}

bool FolderNavigation::eventFilter(QObject* watched, QEvent* event) {
    const bool isPress =
        event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (!isPress && event->type() != QEvent::MouseButtonRelease) {
        return false;
    }
    const Qt::MouseButton button = static_cast<QMouseEvent*>(event)->button();
    const auto* const widget = qobject_cast<QWidget*>(watched);
    if ((button != Qt::BackButton && button != Qt::ForwardButton) || widget == nullptr ||
        widget->window() != &dependencies_.window) {
        return false;
    }
    if (isPress) {
        button == Qt::BackButton ? goBack() : goForward();
    }
    return true;
}

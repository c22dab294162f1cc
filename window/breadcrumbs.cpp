#include "window/breadcrumbs.h"

#include <QEvent>
#include <QStyleOptionToolButton>
#include <QStylePainter>
#include <QTimer>
#include <algorithm>

#include "base/clsFile.h"
#include "widgets/qtText.h"

namespace {

// The keys of the folders from the drive to the folder itself.
std::vector<std::string> keysOnTheWayTo(const std::string& key) {
    std::vector<std::string> keys;
    std::size_t end = clsFile(key).drive().size();
    while (end > 0 && end <= key.size()) {
        keys.push_back(key.substr(0, end));
        const std::size_t next = key.find('\\', end);
        end = next == std::string::npos ? 0 : next + 1;
    }
    return keys;
}

QString shownNameOf(const std::string& key) {
    const clsFile file(key);
    return file.fullPathNoDrive().empty() ? modQt::shownPath(key) : modQt::shownName(file.lastFolder());
}

} // namespace

// A button with a text that is cut where there is no room, and a mark between it and the one before it.
class Breadcrumbs::Crumb final : public QToolButton {
public:
    Crumb(const std::string& key, bool isShown, QWidget* parent)
        : QToolButton(parent), key_(key), isShown_(isShown) {
        setText(shownNameOf(key));
        setAutoRaise(true);
        setFocusPolicy(Qt::TabFocus);
        setToolTip(modQt::tip(modQt::shownFolder(key)));
        setAccessibleName(modQt::shownFolder(key));
        setObjectName(isShown ? QStringLiteral("cmdCrumbLast") : QStringLiteral("cmdCrumb"));
        QFont bold = font();
        bold.setBold(isShown);
        setFont(bold);
    }

    [[nodiscard]] const std::string& key() const noexcept { return key_; }
    [[nodiscard]] bool isShown() const noexcept { return isShown_; }
    void setMarked(bool marked) { marked_ = marked; }

    [[nodiscard]] int wantedWidth() const { return markWidth() + textWidth(text()) + 2 * margin(); }
    [[nodiscard]] int leastWidth() const {
        return std::min(wantedWidth(), markWidth() + textWidth(text().left(3)) * 2 + 2 * margin());
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QStylePainter painter(this);
        QStyleOptionToolButton option;
        initStyleOption(&option);
        const int mark = marked_ ? markWidth() : 0;
        if (marked_) {
            style()->drawItemText(&painter, QRect(0, 0, mark, height()), Qt::AlignCenter, palette(), true,
                                  QStringLiteral("›"), QPalette::WindowText);
        }
        option.rect.setLeft(mark);
        option.text = fontMetrics().elidedText(text(), Qt::ElideMiddle, option.rect.width() - 2 * margin());
        painter.drawComplexControl(QStyle::CC_ToolButton, option);
    }

private:
    // A text that is cut has to be a pixel narrower than its place.
    [[nodiscard]] int textWidth(const QString& text) const {
        return fontMetrics().horizontalAdvance(text) + 2;
    }
    [[nodiscard]] int markWidth() const { return textWidth(QStringLiteral("›")) + margin(); }
    [[nodiscard]] int margin() const { return fontMetrics().height() / 3; }

    std::string key_;
    bool isShown_;
    bool marked_ = true;
};

Breadcrumbs::Breadcrumbs(QWidget* parent) : QWidget(parent), cmdMore_(this) {
    setObjectName(QStringLiteral("breadcrumbs"));
    setAccessibleName(QStringLiteral("Path of the shown folder"));
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    cmdMore_.setObjectName(QStringLiteral("cmdCrumbMore"));
    cmdMore_.setText(QStringLiteral("…"));
    cmdMore_.setAutoRaise(true);
    cmdMore_.setFocusPolicy(Qt::TabFocus);
    cmdMore_.setToolTip(QStringLiteral("The folders above"));
    cmdMore_.setAccessibleName(QStringLiteral("The folders above"));
    cmdMore_.setPopupMode(QToolButton::InstantPopup);
    cmdMore_.setMenu(&above_);
    cmdMore_.hide();
}

Breadcrumbs::~Breadcrumbs() {
    cmdMore_.setMenu(nullptr);
}

void Breadcrumbs::showFolder(const std::string& key, const std::string& below) {
    const std::string& last = below.starts_with(key) ? below : key;
    const auto isAsNow = [&](const std::unique_ptr<Crumb>& crumb) {
        return crumb->isShown() == (crumb->key() == key);
    };
    if (!crumbs_.empty() && crumbs_.back()->key() == last &&
        std::all_of(crumbs_.begin(), crumbs_.end(), isAsNow)) {
        return;
    }
    // The buttons may be at work: a click on one of them leads here.
    for (std::unique_ptr<Crumb>& old : crumbs_) {
        old->hide();
        old.release()->deleteLater();
    }
    crumbs_.clear();
    const std::vector<std::string> keys = keysOnTheWayTo(last);
    QWidget* before = &cmdMore_;
    for (const std::string& each : keys) {
        Crumb& crumb = *crumbs_.emplace_back(std::make_unique<Crumb>(each, each == key, this));
        connect(&crumb, &QToolButton::clicked, this, [this, each] { choose(each); });
        setTabOrder(before, &crumb);
        before = &crumb;
    }
    updateGeometry();
    place();
}

// The handler may scan for a long time, and replaces the buttons: it runs when the click is over.
void Breadcrumbs::choose(const std::string& key) {
    QTimer::singleShot(0, this, [this, key] { Q_EMIT folderChosen(key); });
}

void Breadcrumbs::place() {
    int wanted = 0;
    for (const auto& crumb : crumbs_) {
        wanted += crumb->wantedWidth();
    }
    const int more = cmdMore_.sizeHint().width();
    std::size_t hidden = 0;
    while (hidden + 1 < crumbs_.size() && wanted + (hidden > 0 ? more : 0) > width()) {
        wanted -= crumbs_[hidden]->wantedWidth();
        ++hidden;
    }
    int left = hidden > 0 ? more : 0;
    cmdMore_.setVisible(hidden > 0);
    cmdMore_.setGeometry(0, 0, more, height());
    for (std::size_t i = 0; i < crumbs_.size(); ++i) {
        Crumb& crumb = *crumbs_[i];
        crumb.setVisible(i >= hidden);
        crumb.setMarked(i > 0);
        if (i >= hidden) {
            const int room = std::max(width() - left, crumb.leastWidth());
            const int own = std::min(crumb.wantedWidth(), room);
            crumb.setGeometry(left, 0, own, height());
            left += own;
        }
    }
    fillMenu(hidden);
}

// The nearest first.
void Breadcrumbs::fillMenu(std::size_t hidden) {
    above_.clear();
    for (std::size_t i = hidden; i-- > 0;) {
        QString text = shownNameOf(crumbs_[i]->key());
        QAction* const action = above_.addAction(text.replace(u'&', QStringLiteral("&&")));
        connect(action, &QAction::triggered, this, [this, key = crumbs_[i]->key()] { choose(key); });
    }
}

QSize Breadcrumbs::sizeHint() const {
    int wanted = 0;
    for (const auto& crumb : crumbs_) {
        wanted += crumb->wantedWidth();
    }
    return {wanted, cmdMore_.sizeHint().height()};
}

QSize Breadcrumbs::minimumSizeHint() const {
    return {0, cmdMore_.sizeHint().height()};
}

void Breadcrumbs::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    place();
}

void Breadcrumbs::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        updateGeometry();
        place();
    }
}

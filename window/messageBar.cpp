#include "window/messageBar.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <utility>

#include "widgets/qtText.h"

namespace {

// How much of the highlight colour is laid over the window's background.
constexpr float groundTint = 0.15F;
constexpr float edgeTint = 0.4F;

QColor tint(const QWidget& widget, float share) {
    // The colour of the active window, so that the bar does not change when another window is used.
    QColor colour = widget.palette().color(QPalette::Active, QPalette::Highlight);
    colour.setAlphaF(share);
    return colour;
}

QFont crossFont(const QFont& font) {
    QFont large = font;
    large.setPointSizeF(font.pointSizeF() * 1.4);
    return large;
}

} // namespace

MessageBar::MessageBar(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("messageBar"));
    hide();
    layOut();
    const auto notePressed = [this] { pressedOn_ = shown_; };
    for (std::size_t index = 0; index < cmdMessage_.size(); ++index) {
        connect(&cmdMessage_.at(index), &QPushButton::pressed, this, notePressed);
        connect(&cmdMessage_.at(index), &QPushButton::clicked, this, [this, index] { runAction(index); });
    }
    connect(&cmdCloseMessage_, &QToolButton::pressed, this, notePressed);
    connect(&cmdCloseMessage_, &QToolButton::clicked, this, &MessageBar::cmdCloseMessage_Click);
    connect(qApp, &QApplication::focusChanged, this, &MessageBar::followFocus);
}

void MessageBar::layOut() {
    const int iconSide = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    icon_.setPixmap(style()
                        ->standardIcon(QStyle::SP_MessageBoxInformation, nullptr, this)
                        .pixmap(QSize(iconSide, iconSide), devicePixelRatio()));
    lblMessage_.setObjectName(QStringLiteral("lblMessage"));
    lblMessage_.setTextFormat(Qt::PlainText);
    lblMessage_.setCutAt(Qt::ElideRight);
    cmdCloseMessage_.setObjectName(QStringLiteral("cmdCloseMessage"));
    // The style's own icon of a cross is hard to see in dark palettes.
    cmdCloseMessage_.setText(QStringLiteral("×"));
    cmdCloseMessage_.setFont(crossFont(font()));
    cmdCloseMessage_.setAutoRaise(true);
    cmdCloseMessage_.setAccessibleName(QStringLiteral("Close message"));
    cmdCloseMessage_.setToolTip(QStringLiteral("Close (Esc)"));
    cmdCloseMessage_.setFocusPolicy(Qt::TabFocus); // a click leaves the focus where it is

    const int margin = fontMetrics().height() / 4;
    layout_.setContentsMargins(2 * margin, margin, margin, margin);
    layout_.addWidget(&icon_);
    layout_.addWidget(&lblMessage_, 1);
    for (std::size_t index = 0; index < cmdMessage_.size(); ++index) {
        QPushButton& button = cmdMessage_.at(index);
        button.setObjectName(QStringLiteral("cmdMessage%1").arg(index + 1));
        button.setFocusPolicy(Qt::TabFocus);
        layout_.addWidget(&button);
    }
    layout_.addWidget(&cmdCloseMessage_);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

// --- The messages ---------------------------------------------------------------------------------------

void MessageBar::showMessage(Topic topic, Message message) {
    messages_.insert_or_assign(topic, std::move(message));
    refresh();
}

void MessageBar::dismiss(Topic topic) {
    if (messages_.erase(topic) > 0) {
        refresh();
    }
}

void MessageBar::closeShown() {
    if (shown_) {
        dismiss(*shown_);
    }
}

// Between a button's going down and its click, which with an access key is a tenth of a second, the message
// may have given way to another, which the click is not meant for.
void MessageBar::cmdCloseMessage_Click() {
    if (pressedOn_ == shown_) {
        closeShown();
    }
}

// Runs the action last, because it may show and dismiss messages, or handle events for a long time.
void MessageBar::runAction(std::size_t index) {
    if (!shown_ || pressedOn_ != shown_ || index >= messages_.at(*shown_).actions.size()) {
        return;
    }
    const std::function<void()> run = messages_.at(*shown_).actions.at(index).run;
    closeShown();
    run();
}

void MessageBar::refresh() {
    const bool wasShown = shown_.has_value();
    if (messages_.empty()) {
        shown_.reset();
        vanish();
    } else {
        const auto& [topic, message] = *messages_.begin();
        const bool isOther = shown_ != topic;
        // So that a key that was meant for the last message does not press a button of this one.
        if (isOther && hasFocusInside()) {
            cmdCloseMessage_.setFocus();
        }
        shown_ = topic;
        const bool isNews = isOther || lblMessage_.text() != message.text;
        present(message);
        if (isNews) {
            announce();
        }
    }
    if (wasShown != shown_.has_value()) {
        Q_EMIT shownChanged(!wasShown);
    }
}

void MessageBar::present(const Message& message) {
    lblMessage_.setText(message.text);
    lblMessage_.setToolTip(modQt::tip(message.text));
    setAccessibleName(message.text);
    for (std::size_t index = 0; index < cmdMessage_.size(); ++index) {
        QPushButton& button = cmdMessage_.at(index);
        const bool isUsed = index < message.actions.size();
        if (!isUsed && window()->focusWidget() == &button) {
            cmdCloseMessage_.setFocus();
        }
        button.setText(isUsed ? message.actions.at(index).caption : QString());
        button.setVisible(isUsed);
    }
    show();
}

void MessageBar::announce() {
    if (QAccessible::isActive()) {
        QAccessibleEvent event(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&event);
    }
}

// --- The focus ------------------------------------------------------------------------------------------

bool MessageBar::hasFocusInside() const {
    const QWidget* const focused = window()->focusWidget();
    return focused != nullptr && isAncestorOf(focused);
}

void MessageBar::followFocus(QWidget* before, const QWidget* now) {
    if (now != nullptr && isAncestorOf(now) && before != nullptr && !isAncestorOf(before) &&
        before->window() == window()) {
        focusBefore_ = before;
    }
}

void MessageBar::vanish() {
    const bool hadFocus = hasFocusInside();
    if (hadFocus && focusBefore_ && focusBefore_->isVisibleTo(window()) && focusBefore_->isEnabled()) {
        focusBefore_->setFocus();
    }
    hide();
    // Qt itself moves the focus on only in the active window.
    if (hadFocus && (hasFocusInside() || window()->focusWidget() == nullptr)) {
        focusNextChild();
    }
}

void MessageBar::keyPressEvent(QKeyEvent* event) {
    auto* const button = qobject_cast<QAbstractButton*>(window()->focusWidget());
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape) {
        closeShown();
    } else if (isEnter && button != nullptr && !event->isAutoRepeat()) {
        button->click();
    } else {
        QFrame::keyPressEvent(event);
    }
}

// --- How it looks ---------------------------------------------------------------------------------------

QSize MessageBar::withLineHeight(QSize size) const {
    const QMargins margins = layout_.contentsMargins();
    const int least = cmdMessage_.front().sizeHint().height() + margins.top() + margins.bottom();
    return {size.width(), std::max(size.height(), least)};
}

QSize MessageBar::sizeHint() const {
    return withLineHeight(QFrame::sizeHint());
}

QSize MessageBar::minimumSizeHint() const {
    return withLineHeight(QFrame::minimumSizeHint());
}

void MessageBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), tint(*this, groundTint));
    painter.setPen(tint(*this, edgeTint));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

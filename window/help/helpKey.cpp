#include "window/help/helpKey.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <utility>

#include "widgets/helpTopic.h"

HelpKey::HelpKey(QWidget& window, HelpCommand& help, std::function<const QWidget*()> otherwise)
    : window_(window), help_(help), otherwise_(std::move(otherwise)) {
    qApp->installEventFilter(this); // a shortcut of the window would not work in its modal dialogs
}

HelpKey::~HelpKey() {
    qApp->removeEventFilter(this);
}

QString HelpKey::topicFor(const QWidget& control) const {
    const QString topic = modQt::helpTopic(control);
    const QWidget* const around = topic.isEmpty() && control.window() == &window_ ? otherwise_() : nullptr;
    return around == nullptr ? topic : modQt::helpTopic(*around);
}

bool HelpKey::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return false;
    }
    const auto& key = *static_cast<const QKeyEvent*>(event);
    const auto* control = qobject_cast<const QWidget*>(watched);
    if (key.key() != Qt::Key_F1 || key.modifiers() != Qt::NoModifier || control == nullptr ||
        qobject_cast<const QMenu*>(control) != nullptr) {
        return false;
    }
    if (control->focusProxy() != nullptr) { // as that of the list which completes a path
        control = control->focusProxy();
    }
    const QString topic = topicFor(*control);
    if (topic.isEmpty()) {
        return false;
    }
    if (!key.isAutoRepeat()) {
        help_.showTopic(topic, *control->window());
    }
    return true;
}

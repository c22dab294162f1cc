#pragma once

#include <QEvent>
#include <QObject>
#include <QString>
#include <QWidget>
#include <functional>

#include "window/help/showHelp.h"

// F1 in the window and in its dialogs: shows the help for the control that has the focus (setHelpTopic).
class HelpKey final : public QObject {
    Q_OBJECT

public:
    // Nothing is owned. `otherwise` is what the window's controls without a page of their own belong to.
    HelpKey(QWidget& window, HelpCommand& help, std::function<const QWidget*()> otherwise);
    ~HelpKey() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QString topicFor(const QWidget& control) const;

    QWidget& window_;
    HelpCommand& help_;
    std::function<const QWidget*()> otherwise_;
};

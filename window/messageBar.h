#pragma once

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QString>
#include <QToolButton>
#include <array>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "window/statusPanels.h"

// A bar of one line with a message that waits for no answer, what can be done about it, and a cross. It holds
// one message of each topic and shows the most urgent one; without messages it is hidden.
class MessageBar final : public QFrame {
    Q_OBJECT

public:
    // In order of urgency.
    enum class Topic {
        outdatedComparison,
        wrappedSizes,
        unreadable,
        lacksSizesOnDisk,
        comparison,
        firstStart
    };

    struct Message {
        struct Action {
            QString caption; // may have an access key: "&Show"
            std::function<void()> run;
        };
        QString text;                // one line of plain text
        std::vector<Action> actions; // as buttons; two at most
    };

    explicit MessageBar(QWidget* parent = nullptr);

    // Replaces the message of the same topic.
    void showMessage(Topic topic, Message message);
    // Does nothing if there is no such message.
    void dismiss(Topic topic);
    // What the cross does, and Escape while the focus is in the bar: the next message is shown, if any.
    void closeShown();

    [[nodiscard]] bool isShowing() const noexcept { return !messages_.empty(); }
    // Whether it has such a message, on show or behind others.
    [[nodiscard]] bool holds(Topic topic) const { return messages_.contains(topic); }

    // The height is the same with and without buttons.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    // The bar has appeared or vanished; not when one message follows another.
    void shownChanged(bool isShowing);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void layOut();
    void refresh();
    void present(const Message& message);
    void vanish();
    void announce();
    void runAction(std::size_t index);
    void cmdCloseMessage_Click();
    void followFocus(QWidget* before, const QWidget* now);
    [[nodiscard]] bool hasFocusInside() const;
    [[nodiscard]] QSize withLineHeight(QSize size) const;

    std::map<Topic, Message> messages_;
    std::optional<Topic> shown_;
    std::optional<Topic> pressedOn_; // the message that was shown when a button went down
    QPointer<QWidget> focusBefore_;  // what had the focus before it came into the bar
    QHBoxLayout layout_{this};
    QLabel icon_;
    CutLabel lblMessage_;
    std::array<QPushButton, 2> cmdMessage_;
    QToolButton cmdCloseMessage_;
};

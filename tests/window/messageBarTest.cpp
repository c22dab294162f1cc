#include "window/messageBar.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>
#include <memory>
#include <string>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Topic = MessageBar::Topic;

class Bar : public testing::Test {
protected:
    Bar() {
        layout.addWidget(&before);
        layout.addWidget(&bar);
        layout.addWidget(&after);
        window.resize(600, 200);
        QObject::connect(&bar, &MessageBar::shownChanged, &bar,
                         [this](bool isShowing) { changes.push_back(isShowing); });
    }
    void SetUp() override {
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        before.setFocus();
    }

    // A message whose actions record that they ran.
    MessageBar::Message message(const char* text, const std::vector<const char*>& captions = {}) {
        MessageBar::Message result{QString::fromUtf8(text), {}};
        for (const char* caption : captions) {
            result.actions.push_back(
                {QString::fromUtf8(caption), [this, caption] { ran.emplace_back(caption); }});
        }
        return result;
    }
    template <class Control>
    Control& control(const char* name) {
        return *bar.findChild<Control*>(QString::fromUtf8(name));
    }
    QPushButton& button(int number) {
        return control<QPushButton>(number == 1 ? "cmdMessage1" : "cmdMessage2");
    }
    QToolButton& cross() { return control<QToolButton>("cmdCloseMessage"); }
    // The text and the buttons in view, joined by "|".
    std::string shown() {
        if (!bar.isVisible()) {
            return {};
        }
        QString text = control<QLabel>("lblMessage").text();
        EXPECT_EQ(bar.accessibleName(), text);
        for (const int number : {1, 2}) {
            text += button(number).isVisible() ? u'|' + button(number).text() : QString();
        }
        return text.toStdString();
    }
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }

    QWidget window;
    QVBoxLayout layout{&window};
    QLineEdit before;
    MessageBar bar;
    QLineEdit after;
    std::vector<bool> changes;
    std::vector<std::string> ran;
};

TEST_F(Bar, showsTheMostUrgentMessageAndHidesWithTheLast) {
    EXPECT_EQ(shown(), "");
    bar.dismiss(Topic::unreadable);
    bar.closeShown();
    EXPECT_FALSE(bar.isShowing());

    bar.showMessage(Topic::firstStart, message("welcome", {"&Load"}));
    EXPECT_EQ(shown(), "welcome|&Load");
    bar.showMessage(Topic::unreadable, message("12 folders", {"&Show", "&Never"}));
    EXPECT_EQ(shown(), "12 folders|&Show|&Never");
    bar.showMessage(Topic::wrappedSizes, message("wrapped"));
    EXPECT_EQ(shown(), "wrapped");
    bar.showMessage(Topic::unreadable, message("13 folders"));
    EXPECT_EQ(shown(), "wrapped");
    EXPECT_THAT(changes, ElementsAre(true)) << "one message after another is no change";

    QTest::mouseClick(&cross(), Qt::LeftButton);
    EXPECT_EQ(shown(), "13 folders");
    QTest::mouseClick(&cross(), Qt::LeftButton);
    EXPECT_EQ(shown(), "welcome|&Load");
    bar.dismiss(Topic::firstStart);
    EXPECT_EQ(shown(), "");
    EXPECT_FALSE(bar.isShowing());
    EXPECT_THAT(changes, ElementsAre(true, false));
    EXPECT_EQ(QApplication::focusWidget(), &before) << "clicks leave it where it was";
    EXPECT_THAT(ran, IsEmpty());
}

TEST_F(Bar, runsAnActionWhenItsMessageIsGone) {
    MessageBar::Message outer = message("outer", {"&No"});
    outer.actions.push_back({QStringLiteral("&Yes"), [&, count = 0]() mutable {
                                 ran.push_back("begin " + shown());
                                 bar.showMessage(Topic::unreadable, message("inner", {"first", "second"}));
                                 QTest::mouseClick(&button(2), Qt::LeftButton); // as while events are handled
                                 bar.showMessage(Topic::firstStart, message("left behind"));
                                 ran.push_back("end " + std::to_string(++count));
                             }});
    bar.showMessage(Topic::unreadable, outer);
    bar.showMessage(Topic::firstStart, message("next"));
    QTest::mouseClick(&button(2), Qt::LeftButton);
    EXPECT_THAT(ran, ElementsAre("begin next", "second", "end 1"));
    EXPECT_EQ(shown(), "left behind");
}

TEST_F(Bar, doesNotTakeAClickForAnotherMessage) {
    for (QAbstractButton* pressed :
         {static_cast<QAbstractButton*>(&button(1)), static_cast<QAbstractButton*>(&cross())}) {
        bar.showMessage(Topic::unreadable, message("12 folders", {"&Show", "&Never"}));
        QTest::mousePress(pressed, Qt::LeftButton);
        bar.showMessage(Topic::wrappedSizes, message("wrapped", {"&Why", "&Mend"}));
        QTest::mouseRelease(pressed, Qt::LeftButton);
        EXPECT_EQ(shown(), "wrapped|&Why|&Mend");
        bar.dismiss(Topic::wrappedSizes);
    }
    press(Qt::Key_N, Qt::AltModifier);
    bar.closeShown();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !button(2).isDown(); }));
    EXPECT_THAT(ran, IsEmpty());
}

TEST_F(Bar, isReachedAndUsedByKeys) {
    bar.showMessage(Topic::unreadable, message("12 folders", {"&Show", "&Never"}));
    std::vector<QWidget*> reached;
    for (int i = 0; i < 4; ++i) {
        press(Qt::Key_Tab);
        reached.push_back(QApplication::focusWidget());
    }
    EXPECT_THAT(reached, ElementsAre(&button(1), &button(2), &cross(), &after));

    for (const auto& [key, modifiers] :
         {std::pair(Qt::Key_N, Qt::AltModifier), std::pair(Qt::Key_Return, Qt::NoModifier),
          std::pair(Qt::Key_Enter, Qt::KeypadModifier), std::pair(Qt::Key_Space, Qt::NoModifier)}) {
        bar.showMessage(Topic::unreadable, message("12 folders", {"&Show", "&Never"}));
        if (modifiers != Qt::AltModifier) {
            button(2).setFocus();
        }
        ran.clear();
        press(key, modifiers);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !ran.empty(); })) << "an access key takes a moment";
        EXPECT_THAT(ran, ElementsAre("&Never")) << key;
        EXPECT_EQ(shown(), "") << key;
    }
}

TEST_F(Bar, givesTheFocusBackWhenItVanishes) {
    const auto openWithFocus = [&] {
        bar.showMessage(Topic::unreadable, message("12 folders", {"&Show"}));
        before.setFocus();
        button(1).setFocus();
    };
    openWithFocus();
    press(Qt::Key_Escape);
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(QApplication::focusWidget(), &before);

    openWithFocus();
    before.setEnabled(false);
    press(Qt::Key_Escape);
    EXPECT_EQ(QApplication::focusWidget(), &after) << "it cannot go back";
    before.setEnabled(true);

    openWithFocus();
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    bar.closeShown();
    EXPECT_EQ(window.focusWidget(), &before) << "another window is in use";
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));

    openWithFocus();
    before.hide();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    bar.closeShown();
    EXPECT_EQ(window.focusWidget(), &after) << "both";
}

// Otherwise a key that is meant for one message would press the button of another.
TEST_F(Bar, movesTheFocusToTheCrossWhenItsButtonChanges) {
    const auto replacedBy = [&](Topic topic, const std::vector<const char*>& captions) {
        bar.showMessage(Topic::unreadable, message("12 folders", {"&Show", "&Never"}));
        button(2).setFocus();
        bar.showMessage(topic, message("other", captions));
        QWidget* const focused = window.focusWidget();
        bar.dismiss(topic);
        bar.dismiss(Topic::unreadable);
        return focused;
    };
    QWidget other;
    for (QWidget* active : {&window, &other}) {
        active->show();
        active->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(active));
        EXPECT_EQ(replacedBy(Topic::wrappedSizes, {"&Why", "&Mend"}), &cross());
        EXPECT_EQ(replacedBy(Topic::unreadable, {"&Show"}), &cross());
        EXPECT_EQ(replacedBy(Topic::unreadable, {"&Show", "&Never"}), &button(2)) << "only its text is new";
        EXPECT_EQ(replacedBy(Topic::firstStart, {}), &button(2)) << "it waits";
    }
}

TEST_F(Bar, staysOneLineHighAndShrinksWithItsWindow) {
    bar.setStyleSheet(QStringLiteral("QPushButton { padding: 9px; }")); // higher than the cross
    const QString text = QStringLiteral("<b>Folders</b> & files that could not be read, ").repeated(20);
    bar.showMessage(Topic::unreadable, {text, {{QStringLiteral("&Show"), [] {}}}});
    QApplication::processEvents();
    const int height = bar.height();
    EXPECT_EQ(window.width(), 600);
    EXPECT_LT(bar.minimumSizeHint().width(), 300);
    EXPECT_LT(height, 4 * bar.fontMetrics().height());
    EXPECT_TRUE(control<QLabel>("lblMessage").toolTip().contains(QStringLiteral("&lt;b&gt;Folders")));
    bar.showMessage(Topic::unreadable, message("No buttons"));
    EXPECT_EQ(bar.sizeHint().height(), height);
    EXPECT_EQ(bar.minimumSizeHint().height(), height);
}

// On light and on dark ground, the bar stands out from the window but not from its text.
TEST_F(Bar, takesItsColoursFromThePalette) {
    for (const QColor& ground : {QColor(Qt::white), QColor(40, 40, 40)}) {
        window.setPalette(QPalette(ground, ground));
        bar.showMessage(Topic::unreadable, message("12 folders"));
        QApplication::processEvents();
        const QColor colour = window.grab().toImage().pixelColor(bar.geometry().center());
        EXPECT_NE(colour, ground);
        EXPECT_LT(std::abs(colour.lightness() - ground.lightness()), 60);
    }
}

} // namespace

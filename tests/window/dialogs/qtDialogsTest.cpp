#include "window/dialogs/qtDialogs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTextDocument>
#include <QTimer>
#include <array>
#include <functional>

#include "export/clsExport.h"
#include "platform/environment.h"
#include "support/errorNumberOf.h"
#include "support/temporaryFolder.h"
#include "window/dialogs/frmExport.h"

namespace {

constexpr const char* chartFilter = "PNG Pictures (*.png)|*.png|PDF (*.pdf)|*.pdf|All Files (*.*)|*.*";

class Dialogs : public testing::Test {
protected:
    Dialogs() { dialogs.setParent(&window); }

    // Does this to the next box as a user would, once it waits for an answer.
    template <class Box>
    void whenShown(std::function<void(Box&)> answer) {
        QTimer::singleShot(0, &window, [this, answer = std::move(answer)] {
            auto* const box = qobject_cast<Box*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->parentWidget(), &window);
            answer(*box);
            EXPECT_FALSE(box->isVisible()) << "it was answered";
            box->close();
        });
    }
    // Types a name (or none) into the next file dialog and presses Return.
    void typeName(const QString& name) {
        whenShown<QFileDialog>([name](QFileDialog& box) {
            auto* const edit = box.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            if (!name.isEmpty()) {
                edit->setText(name);
            }
            QTest::keyClick(edit, Qt::Key_Return);
        });
    }
    std::string saved(const char* proposed, const QString& typed) {
        typeName(typed);
        return dialogs.saveFile({chartFilter, proposed});
    }
    [[nodiscard]] QString path(const char* name) const { return QString::fromStdString(folder.typed(name)); }

    TemporaryFolder folder;
    QWidget window;
    QtDialogs dialogs;
};

TEST_F(Dialogs, messagesAreShownAsTheyAreWrittenUntilTheyAreClosed) {
    const QString text = QStringLiteral("3 <b>files</b> & more");
    QApplication::setOverrideCursor(Qt::BusyCursor);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        bool shown = false;
        whenShown<QMessageBox>([&](QMessageBox& box) {
            EXPECT_EQ(box.text(), text);
            EXPECT_EQ(box.textFormat(), Qt::PlainText) << "names of files are no HTML";
            EXPECT_EQ(box.windowTitle(), QStringLiteral("Spannory"));
            EXPECT_EQ(box.buttons().size(), 1);
            EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor)
                << "in the midst of long work";
            QTest::keyClick(&box, key);
            shown = true;
        });
        dialogs.message(text);
        EXPECT_TRUE(shown);
        EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::BusyCursor);
    }
    QApplication::restoreOverrideCursor();
}

TEST_F(Dialogs, messagesNameWhatTheyAreAboutBelowTheirText) {
    for (const char* subject : {"/a/folder", "/<b>bold</b>", "/a & b", ""}) {
        QString shown;
        whenShown<QMessageBox>([&](QMessageBox& box) {
            EXPECT_EQ(box.text(), QStringLiteral("Not found."));
            const auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"));
            if (label != nullptr) {
                QTextDocument document;
                const bool isRich =
                    label->textFormat() == Qt::RichText ||
                    (label->textFormat() == Qt::AutoText && Qt::mightBeRichText(label->text()));
                isRich ? document.setHtml(label->text()) : document.setPlainText(label->text());
                shown = document.toPlainText();
            }
            QTest::keyClick(&box, Qt::Key_Return);
        });
        dialogs.messageAbout(QStringLiteral("Not found."), QString::fromUtf8(subject));
        EXPECT_EQ(shown.toStdString(), subject);
    }
}

TEST_F(Dialogs, questionsAreYesOnlyWhenYesIsChosen) {
    const QString text = QStringLiteral("Overwrite existing file?");
    const QString subject = QStringLiteral("/srv/<b>report</b>.html (03/14/2004 09:05:07 PM, 1.5 Kb)");
    struct Answer {
        std::function<void(QMessageBox&)> give;
        bool toAsk;
        bool toConfirm;
    };
    const Answer answers[] = {
        {[](QMessageBox& box) { box.button(QMessageBox::Yes)->click(); }, true, true},
        {[](QMessageBox& box) { box.button(QMessageBox::No)->click(); }, false, false},
        {[](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); }, false, false},
        {[](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); }, true, false},
        {[](QMessageBox& box) { QTest::keyClick(box.focusWidget(), Qt::Key_Space); }, true, false},
    };
    for (const Answer& answer : answers) {
        whenShown<QMessageBox>(answer.give);
        EXPECT_EQ(dialogs.ask(text), answer.toAsk);
        whenShown<QMessageBox>([&](QMessageBox& box) {
            EXPECT_EQ(box.text(), text);
            EXPECT_EQ(box.informativeText(), subject);
            answer.give(box);
        });
        EXPECT_EQ(dialogs.confirm(text, subject), answer.toConfirm);
    }
}

TEST_F(Dialogs, exportOptionsAreTakenFromTheirBox) {
    clsExport options;
    for (const auto& [button, cancelled] : {std::pair("cmdCancel", true), std::pair("cmdOK", false)}) {
        whenShown<frmExport>([button = button](frmExport& box) {
            box.findChild<QPushButton*>(QString::fromUtf8(button))->click();
        });
        dialogs.exportOptions(options);
        EXPECT_EQ(options.cancelExport, cancelled);
    }
    whenShown<frmExport>([](frmExport& box) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&box));
        box.findChild<QPushButton*>(QStringLiteral("cmdCancel"))->setFocus();
        auto* const summary = box.findChild<QRadioButton*>(QStringLiteral("optDetail1"));
        summary->setFocus();
        QTest::keyClick(summary, Qt::Key_Return);
    });
    dialogs.exportOptions(options);
    EXPECT_FALSE(options.cancelExport) << "Enter means OK again once the focus has left Cancel";
}

TEST_F(Dialogs, savedFilesGetTheNameThatIsMeant) {
    folder.write("there.png", "old");
    EXPECT_EQ(saved("", path("there.png")), folder.typed("there.png"))
        << "overwriting is the caller's question";
    EXPECT_EQ(saved("proposed.png", {}), folder.typed("proposed.png")) << "where the last one was saved";
    EXPECT_EQ(saved("proposed.png", QStringLiteral("bare")), folder.typed("bare.png"));
    EXPECT_EQ(saved("", QStringLiteral("other.dat")), folder.typed("other.dat"));
    EXPECT_EQ(saved("", QString::fromUtf8("\u00E4 b.png")), folder.typed("\u00E4 b.png"));
    EXPECT_EQ(folder.read("there.png"), "old");
}

TEST_F(Dialogs, savedFilesFollowTheFileTypeThatIsChosen) {
    if (platform::saveDialogFollowsFileType()) {
        GTEST_SKIP() << "the system's own dialog does so by itself";
    }
    static_cast<void>(saved("", path("chart.png"))); // the dialog now opens in this folder
    const struct {
        std::array<Qt::Key, 2> keys; // in the list of types
        const char* proposed;
        const char* name;
    } choices[] = {
        {{Qt::Key_Home, Qt::Key_Home}, "chart.png", "chart.png"},
        {{Qt::Key_Home, Qt::Key_Down}, "chart.png", "chart.pdf"},
        {{Qt::Key_Down, Qt::Key_Up}, "chart.png", "chart.png"},
        {{Qt::Key_Home, Qt::Key_Down}, "bare", "bare.pdf"},
        {{Qt::Key_Home, Qt::Key_End}, "chart.png", "chart.png"}, // of all files
        {{Qt::Key_Home, Qt::Key_End}, "bare", "bare"},
    };
    for (const auto& [keys, proposed, name] : choices) {
        whenShown<QFileDialog>([keys = keys](QFileDialog& box) {
            auto* const type = box.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
            EXPECT_EQ(type->count(), 3);
            EXPECT_EQ(type->itemText(2), QStringLiteral("All Files (*)"));
            for (const Qt::Key key : keys) {
                QTest::keyClick(type, key);
            }
            QTest::keyClick(box.findChild<QLineEdit*>(QStringLiteral("fileNameEdit")), Qt::Key_Return);
        });
        EXPECT_EQ(dialogs.saveFile({chartFilter, proposed}), folder.typed(name));
    }
}

TEST_F(Dialogs, openedFilesAreThere) {
    folder.write("scan.mdb", "x");
    typeName(path("scan.mdb"));
    EXPECT_EQ(dialogs.openFile({"Access Databases (*.mdb)|*.mdb|All Files (*.*)|*.*", ""}),
              folder.typed("scan.mdb"));
}

TEST_F(Dialogs, cancelEndsTheCommand) {
    const auto cancel = [this] {
        whenShown<QFileDialog>([](QFileDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    };
    cancel();
    EXPECT_EQ(errorNumberOf([&] {
                  static_cast<void>(dialogs.saveFile({chartFilter, "x.png"}));
              }),
              errorNumber::dialogCancelled);
    cancel();
    EXPECT_EQ(errorNumberOf([&] {
                  static_cast<void>(dialogs.openFile({chartFilter, ""}));
              }),
              errorNumber::dialogCancelled);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

} // namespace

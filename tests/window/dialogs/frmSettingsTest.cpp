#include "window/dialogs/frmSettings.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>
#include <optional>

#include "base/clsRegSettings.h"
#include "base/clsSettings.h"
#include "platform/paths.h"
#include "support/temporaryFolder.h"
#include "support/testSystem.h"
#include "widgets/qtText.h"
#include "window/windowFixture.h"

using modSettings::Key;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class SettingsDialog : public testing::Test {
protected:
    frmSettings& open(const std::string& file = {}) {
        if (!file.empty()) {
            folder.write("settings.ini", file);
        }
        settings.load(store, folder.internal());
        sheet.emplace(store, settings, folder.internal());
        form = std::make_unique<frmSettings>(*sheet, dialogs, nullptr);
        form->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form.get()));
        return *form;
    }
    template <class Control>
    Control& control(const std::string& name) {
        auto* const found = form->findChild<Control*>(QString::fromStdString(name));
        if (found == nullptr) {
            throw std::runtime_error("no control " + name);
        }
        return *found;
    }
    // What is said about a field; empty if nothing is.
    std::string remark(const std::string& key) {
        const auto& label = control<QLabel>(key + "Remark");
        return label.parentWidget()->isHidden() ? "" : label.text().toStdString();
    }
    QPushButton& ok() { return control<QPushButton>("cmdOK"); }
    std::string complaint() {
        const auto& label = control<QLabel>("lblComplaint");
        return label.isVisible() ? label.text().toStdString() : "";
    }

    TemporaryFolder folder;
    clsRegSettings store;
    clsSettings settings;
    RecordingDialogs dialogs;
    std::optional<SettingsSheet> sheet;
    std::unique_ptr<frmSettings> form;
};

TEST_F(SettingsDialog, everyKeyIsReachedByTabAndByItsAccessKeyFromTopToBottom) {
    open();
    auto& tabs = control<QTabWidget>("settingTabs");
    for (int page = 0; page < tabs.count(); ++page) {
        tabs.setCurrentIndex(page);
        QString taken = QStringLiteral("SLFWMD"); // of the tabs and the buttons
        int lowest = 0;
        QWidget* last = nullptr;
        for (const Key& key : modSettings::keys()) {
            auto& field = control<QWidget>(std::string(key.name));
            if (!tabs.currentWidget()->isAncestorOf(&field)) {
                continue;
            }
            const std::string name(key.name);
            const QChar access = QString::fromStdString(std::string(key.caption)).section(u'&', 1).at(0);
            EXPECT_FALSE(taken.contains(access, Qt::CaseInsensitive)) << name;
            taken += access;
            const int top = field.mapTo(form.get(), QPoint()).y();
            EXPECT_GT(top, lowest) << name;
            lowest = top;
            for (int i = 0; last != nullptr && i < 2 && !field.hasFocus(); ++i) { // a button is between
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            }
            EXPECT_TRUE(last == nullptr || field.hasFocus()) << name;
            form->setFocus();
            QTest::keyClick(form.get(), static_cast<Qt::Key>(access.toUpper().unicode()), Qt::AltModifier);
            EXPECT_TRUE(field.hasFocus()) << name;
            last = &field;
        }
        ASSERT_NE(last, nullptr);
    }
}

TEST_F(SettingsDialog, enterStoresAlsoAfterTheFocusWasOnCancel) {
    open();
    control<QPushButton>("cmdCancel").setFocus();
    auto& readOnly = control<QCheckBox>("readOnly");
    control<QTabWidget>("settingTabs").setCurrentIndex(3);
    readOnly.setFocus();
    readOnly.click();
    QTest::keyClick(&readOnly, Qt::Key_Return);
    EXPECT_EQ(form->result(), QDialog::Accepted);
    EXPECT_THAT(folder.read("settings.ini"), HasSubstr("readOnly=1"));
}

TEST_F(SettingsDialog, storesWhatWasChangedInItAndNothingElse) {
    open("; mine\r\n[APPLICATION_SETTINGS]\r\nreadOnly=0\r\nother=1\r\n");
    control<QCheckBox>("readOnly").click();
    control<QCheckBox>("dontUseNetwork").click();
    control<QComboBox>("FileTypeListSortColumn").setCurrentText(QStringLiteral("Extension"));
    control<QComboBox>("FileTypeListSortOrder").setCurrentIndex(0);
    QTest::keyClicks(&control<QLineEdit>("databasePath"), QString::fromStdString(folder.typed("x.dat")));
    EXPECT_EQ(remark("databasePath"), "");
    QTest::keyClick(form.get(), Qt::Key_Return);
    EXPECT_EQ(form->result(), QDialog::Accepted);
    EXPECT_EQ(
        folder.read("settings.ini"),
        "; mine\r\n[APPLICATION_SETTINGS]\r\nreadOnly=1\r\nother=1\r\ndatabasePath=" + folder.typed("x.dat") +
            "\r\n[User_Settings]\r\nFileTypeListSortColumn=1\r\nFileTypeListSortOrder=0\r\n"
            "[startup]\r\ndontUseNetwork=1\r\n");

    open();
    control<QPushButton>("cmdDefaults").click();
    EXPECT_EQ(control<QLineEdit>("databasePath").text(), QString());
    EXPECT_EQ(control<QLineEdit>("databasePath").placeholderText(),
              modQt::shownPath(folder.internal("main.dat")));
    ok().click();
    EXPECT_EQ(folder.read("settings.ini"),
              "; mine\r\n[APPLICATION_SETTINGS]\r\nreadOnly=0\r\nother=1\r\n[User_Settings]\r\n"
              "FileTypeListSortColumn=3\r\nFileTypeListSortOrder=1\r\n[startup]\r\ndontUseNetwork=0\r\n");
}

TEST_F(SettingsDialog, escapeStoresNothing) {
    open();
    for (const char* name : {"exact", "readOnly"}) {
        control<QCheckBox>(name).click();
    }
    control<QLineEdit>("errorLogFile").setText(QStringLiteral("x"));
    QTest::keyClick(form.get(), Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
    EXPECT_THAT(sheet->stored(), IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(folder / "settings.ini"));
}

TEST_F(SettingsDialog, complaintsKeepOkFromStoring) {
    open();
    auto& database = control<QLineEdit>("databasePath");
    const auto type = [&](const std::string& text) { database.setText(QString::fromStdString(text)); };
    for (const auto& [text, words] : std::initializer_list<std::pair<std::string, const char*>>{
             {folder.typed(std::string(255, 'x')), "at most 254"},
             {folder.typed(), "is a folder"},
             {folder.typed("no folder/x"), "no folder"}}) {
        type(text);
        EXPECT_THAT(remark("databasePath"), HasSubstr(words));
        EXPECT_FALSE(ok().isEnabled());
        EXPECT_THAT(complaint(), HasSubstr("Working database")) << "from any tab";
    }
    type("  " + folder.typed("x.dat") + " ");
    EXPECT_EQ(remark("databasePath"), "");
    EXPECT_EQ(complaint(), "");
    ASSERT_TRUE(ok().isEnabled());

    folder.write("x.dat", "somebody's by now");
    ok().click();
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(control<QTabWidget>("settingTabs").currentIndex(), 2);
    EXPECT_TRUE(database.hasFocus());
    EXPECT_THAT(remark("databasePath"), HasSubstr("not a database"));
    EXPECT_THAT(sheet->stored(), IsEmpty());
}

TEST_F(SettingsDialog, badValuesInTheFileAreShownAndLeftAlone) {
    const std::string file =
        "[APPLICATION_SETTINGS]\nfullFileSizes=maybe\ndatabasePath=" + folder.typed("none/x") +
        "\n[User_Settings]\nDetailListSortColumn=9\nUserListSortOrder=up\n";
    open(file);
    EXPECT_THAT(remark("fullFileSizes"), HasSubstr("maybe"));
    EXPECT_EQ(control<QCheckBox>("fullFileSizes").checkState(), Qt::PartiallyChecked);
    EXPECT_THAT(remark("databasePath"), HasSubstr("no folder"));
    EXPECT_THAT(remark("DetailListSortColumn"), HasSubstr("no column 9"));
    EXPECT_THAT(remark("UserListSortOrder"), HasSubstr("up"));
    EXPECT_EQ(control<QComboBox>("UserListSortOrder").currentText(), QStringLiteral("(up)"));
    EXPECT_FALSE(control<QTabWidget>("settingTabs").tabIcon(0).isNull());
    EXPECT_TRUE(control<QTabWidget>("settingTabs").tabIcon(3).isNull());
    ASSERT_TRUE(ok().isEnabled()) << "the program works with it";
    ok().click();
    EXPECT_EQ(folder.read("settings.ini"), file);

    open();
    auto& box = control<QCheckBox>("fullFileSizes");
    box.click();
    EXPECT_EQ(remark("fullFileSizes"), "");
    box.click();
    EXPECT_EQ(box.checkState(), Qt::Unchecked) << "there are two states from now on";
    ok().click();
    EXPECT_THAT(folder.read("settings.ini"), HasSubstr("fullFileSizes=0"));
}

TEST_F(SettingsDialog, staysWithAllThatWasTypedIfItCannotBeStored) {
    open("[startup]\n");
    EXPECT_FALSE(control<QLabel>("lblFileRemark").isVisible());
    std::filesystem::remove(folder / "settings.ini");
    std::filesystem::create_directory(folder / "settings.ini");
    control<QCheckBox>("readOnly").click();
    EXPECT_TRUE(control<QLabel>("lblFileRemark").isVisible());
    QTest::keyClicks(&control<QLineEdit>("errorLogFile"), QString::fromStdString(folder.typed("log")));
    ok().click();
    ASSERT_TRUE(form->isVisible());
    ASSERT_THAT(dialogs.subjects, ElementsAre(HasSubstr(folder.typed("settings.ini"))));
    std::filesystem::remove(folder / "settings.ini");
    ok().click();
    EXPECT_FALSE(form->isVisible());
    EXPECT_THAT(folder.read("settings.ini"), HasSubstr("errorLogFile=" + folder.typed("log")));
    EXPECT_TRUE(store.GetSetting("application_settings", "readOnly", "", stpIni) == "1");
}

TEST_F(SettingsDialog, filesAreChosen) {
    open();
    auto& choose = control<QPushButton>("errorLogFileChoose");
    choose.click(); // and cancelled
    EXPECT_EQ(control<QLineEdit>("errorLogFile").text(), QString());
    dialogs.file = folder.typed("chosen.txt");
    choose.click();
    EXPECT_EQ(control<QLineEdit>("errorLogFile").text().toStdString(), dialogs.file);
    EXPECT_THAT(remark("errorLogFile"), HasSubstr("no such file yet"));
    EXPECT_THAT(dialogs.messages, IsEmpty());
}

TEST_F(SettingsDialog, readOnlyOfTheCommandLineIsFixed) {
    settings.forceReadOnly();
    open("[APPLICATION_SETTINGS]\nreadOnly=0\n");
    EXPECT_FALSE(control<QCheckBox>("readOnly").isEnabled());
    EXPECT_TRUE(control<QCheckBox>("readOnly").isChecked());
    EXPECT_THAT(remark("readOnly"), HasSubstr("--read-only"));
    control<QPushButton>("cmdDefaults").click();
    ok().click();
    EXPECT_THAT(folder.read("settings.ini"), HasSubstr("readOnly=0"));
    EXPECT_TRUE(settings.readOnly());
}

// Nothing may be cut off on a small screen: what has no room is scrolled to, downwards only.
TEST_F(SettingsDialog, scrollsWhereThereIsLittleRoom) {
    open();
    form->resize(480, 320);
    QApplication::processEvents();
    EXPECT_LE(form->width(), 480);
    EXPECT_LE(form->height(), 320);
    auto& tabs = control<QTabWidget>("settingTabs");
    for (int page = 0; page < tabs.count(); ++page) {
        tabs.setCurrentIndex(page);
        QApplication::processEvents();
        const auto& area = static_cast<QScrollArea&>(*tabs.currentWidget());
        EXPECT_EQ(area.horizontalScrollBar()->maximum(), 0) << page;
    }
    tabs.setCurrentIndex(0);
    auto& last = control<QCheckBox>("getExtensionInfo");
    QTest::keyClick(form.get(), Qt::Key_X, Qt::AltModifier);
    EXPECT_TRUE(last.hasFocus());
}

// The wheel scrolls the page; only in the box that has the focus it goes through the choices.
TEST_F(SettingsDialog, areNotChangedInPassing) {
    open();
    for (QComboBox* const box : form->findChildren<QComboBox*>()) {
        const bool isLast = box->currentIndex() == box->count() - 1;
        const int before = box->currentIndex();
        const QPointF place = box->rect().center();
        QWheelEvent turn(place, box->mapToGlobal(place), {}, {0, isLast ? 120 : -120}, Qt::NoButton, {},
                         Qt::NoScrollPhase, false);
        box->clearFocus();
        turn.accept();
        QApplication::sendEvent(box, &turn);
        EXPECT_EQ(box->currentIndex(), before) << box->objectName().toStdString();
        EXPECT_FALSE(turn.isAccepted()) << "the page takes it";
        EXPECT_FALSE(box->focusPolicy() == Qt::WheelFocus);
    }
    auto& readers = control<QComboBox>("readers");
    readers.setFocus();
    QWheelEvent turn(readers.rect().center(), readers.mapToGlobal(readers.rect().center()), {}, {0, -120},
                     Qt::NoButton, {}, Qt::NoScrollPhase, false);
    const int before = readers.currentIndex();
    QApplication::sendEvent(&readers, &turn);
    EXPECT_NE(readers.currentIndex(), before);
}

} // namespace

#pragma once

#include <gtest/gtest.h>

#include <QAbstractItemModel>
#include <QApplication>
#include <QHeaderView>
#include <QTest>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "support/temporaryFolder.h"
#include "widgets/folderChart.h"
#include "window/dialogs/frmExport.h"
#include "window/dialogs/frmSettings.h"
#include "window/frmMain.h"

// Dialogs that answer themselves and record their calls.
class RecordingDialogs final : public clsDialogs {
public:
    void message(const QString& text) override { messages.push_back(text.toStdString()); }
    void messageAbout(const QString& text, const QString& subject) override {
        message(text);
        subjects.push_back(subject.toStdString());
    }
    [[nodiscard]] bool ask(const QString& text) override {
        questions.push_back(text.toStdString());
        return answer;
    }
    [[nodiscard]] bool confirm(const QString& text, const QString& subject) override {
        confirmed.push_back(subject.toStdString());
        return ask(text);
    }
    void properties(const PropertyRows& rows) override { shownProperties.push_back(rows); }
    void about() override { ++abouts; }
    void exportOptions(clsExport& options) override;
    void settings(SettingsSheet& sheet) override;
    [[nodiscard]] QString folderBefore(const FolderBeforeRequest& request) override;
    [[nodiscard]] std::optional<ServerScan> serverScan(const QString& url,
                                                       clsUserInterface& userInterface) override;
    [[nodiscard]] std::string saveFile(const FileRequest& request) override { return chosen(request); }
    [[nodiscard]] std::string openFile(const FileRequest& request) override { return chosen(request); }
    [[nodiscard]] std::string chooseFolder(const std::string& present) override {
        return chosen({{}, present});
    }
    [[nodiscard]] bool startProgramOf(const std::string& path) override {
        opened.push_back(path);
        return true;
    }

    std::vector<std::string> messages;
    std::vector<std::string> subjects; // of those messages that have one
    std::vector<std::string> questions;
    std::vector<std::string> confirmed; // the subjects of those questions that have No as their default
    std::vector<FileRequest> requests;  // requests for files
    std::vector<std::string> opened;    // files opened in their applications
    std::vector<PropertyRows> shownProperties;
    bool answer = true;
    int abouts = 0;
    std::string file;                                 // the answer to file dialogs; empty: Cancel
    std::function<void(frmExport&)> setExportOptions; // what to do with that box; empty: OK
    std::function<void(frmSettings&)> changeSettings; // the same
    std::function<void(frmFolderBefore&)> chooseFolderBefore;
    std::function<void(frmServer& box)> useServer; // else it is cancelled

private:
    std::string chosen(const FileRequest& request);
};

// The real main window with its own application folder and tree; controls are found by their names.
class WindowFixture {
public:
    WindowFixture();
    ~WindowFixture();

    // Opens the window; files for the application folder must be written first.
    frmMain& open();
    void close() { window.reset(); }

    template <class Control>
    [[nodiscard]] Control& control(const char* name) {
        auto* found = window->findChild<Control*>(QString::fromUtf8(name));
        if (found == nullptr) {
            throw std::runtime_error(std::string("no control ") + name);
        }
        return *found;
    }

    // The internal path of a folder of the tree, with a trailing "\".
    [[nodiscard]] std::string key(std::string_view name = {}) const;
    // Does what a mouse click on the folder's node does.
    void click(const std::string& key);
    // Runs the menu command with this key.
    void command(const char* key) const;
    // Runs this as soon as the next scan handles events.
    void duringScan(std::function<void()> body);

    [[nodiscard]] std::string panel(int number);
    // The texts of a list's rows, with the cells joined by "|".
    [[nodiscard]] std::vector<std::string> rows(const char* list);
    // The chart's bars, smallest first, as label=bytes.
    [[nodiscard]] std::vector<std::string> bars();
    // The first cells of a query's rows in the window's database.
    [[nodiscard]] std::vector<std::string> query(const std::string& statement) const;

    TemporaryFolder application;
    TemporaryFolder tree;
    RecordingDialogs dialogs;
    std::unique_ptr<frmMain> window;

private:
    std::vector<std::unique_ptr<QTimer>> timers;
};

// The common part of the main window's tests.
class MainWindow : public testing::Test, public WindowFixture {
protected:
    // a/big.bin 3000, a/deep/x.txt 10, b/note.txt 200, own.txt 50
    void makeTree() const {
        tree.write("a/big.bin", std::string(3000, 'x'));
        tree.write("a/deep/x.txt", std::string(10, 'x'));
        tree.write("b/note.txt", std::string(200, 'x'));
        tree.write("own.txt", std::string(50, 'x'));
    }
    void openOnTree() {
        makeTree();
        open().openPath(tree.typed());
    }
    // With the tree, and as the window that keys go to.
    void openActive() {
        makeTree();
        open();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    void pressF5(const char* focus = "tvw", bool autoRepeat = false) {
        QKeyEvent release(QEvent::KeyRelease, Qt::Key_F5, Qt::NoModifier, {}, autoRepeat);
        QApplication::sendEvent(&control<QWidget>(focus), &release);
    }
    void clickHeader(const char* list, int section) {
        QHeaderView& header = *control<QTreeView>(list).header();
        const int middle = header.sectionViewportPosition(section) + header.sectionSize(section) / 2;
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, QPoint(middle, header.height() / 2));
    }
    void clickBar(int index) {
        auto& chart = control<FolderChart>("tc");
        QTest::mouseClick(&chart, Qt::LeftButton, {}, chart.markOf(index).center().toPoint());
    }
    QTabWidget& tabs() { return control<QTabWidget>("XTab"); }
    QLineEdit& pathBox() { return control<QLineEdit>("txtPath"); }
    std::string selected() { return control<FolderTree>("tvw").selectedKey(); }
    std::string settingsFile() const { return application.read("settings.ini"); }
};

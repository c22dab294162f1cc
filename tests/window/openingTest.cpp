#include "window/opening.h"

#include <gmock/gmock.h>

#include <QDragEnterEvent>
#include <QMimeData>
#include <QTest>
#include <QUrl>

#include "window/windowFixture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class OpeningInWindow : public MainWindow {
protected:
    // Saves the scan of folder a, 4 items, and scans the whole tree, 8 items.
    void saveAndScan() {
        openActive();
        window->openPath(tree.typed("a"));
        dialogs.file = saved;
        command("ExportMDB");
        window->openPath(tree.typed());
        ASSERT_EQ(items(), "8");
    }
    std::string items() const { return query("select count(*) from details").front(); }
    // Whether the window would take what is dragged, which is then dropped all the same.
    bool drop(const std::vector<std::string>& paths) {
        QMimeData data;
        QList<QUrl> urls;
        for (const std::string& path : paths) {
            urls += QUrl::fromLocalFile(QString::fromStdString(path));
        }
        data.setUrls(urls);
        QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.get(), &enter);
        QDropEvent event(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.get(), &event);
        EXPECT_EQ(event.isAccepted(), enter.isAccepted());
        return enter.isAccepted();
    }
    void type(const std::string& path) {
        pathBox().setFocus();
        pathBox().selectAll();
        QTest::keyClicks(&pathBox(), QString::fromStdString(path));
        QTest::keyClick(&pathBox(), Qt::Key_Return);
    }
    std::string savedScan() { return control<QLabel>("lblSavedScan").text().toStdString(); }

    std::string saved = application.typed("saved.mdb");
};

TEST_F(OpeningInWindow, dropsScanTheFirstFolderOrLoadTheFirstFile) {
    saveAndScan();
    const struct {
        std::vector<std::string> paths;
        bool isTaken;
        std::string items;
        const char* savedScan;
    } cases[] = {
        {{saved}, true, "4", "saved.mdb"},
        {{tree.typed("own.txt"), tree.typed("b"), tree.typed("a")}, true, "6", "saved.mdb"},
        {{saved, tree.typed("own.txt")}, true, "4", "saved.mdb"},
        {{tree.typed("missing")}, false, "4", "saved.mdb"},
        {{}, false, "4", "saved.mdb"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.paths.empty() ? "nothing" : each.paths.front());
        EXPECT_EQ(drop(each.paths), each.isTaken);
        EXPECT_TRUE(QTest::qWaitFor([&] { return items() == each.items; }, 2000)) << items();
        EXPECT_THAT(savedScan(), HasSubstr(each.savedScan));
    }
    EXPECT_THAT(dialogs.messages, IsEmpty());
}

TEST_F(OpeningInWindow, typedPathsLoadWhatLooksLikeASavedScan) {
    saveAndScan();
    tree.write("words.mdb", "no scan");
    const struct {
        std::string path;
        std::string items;
        const char* message;
    } cases[] = {
        {tree.typed("own.txt"), "8", "Directory not found.  You can select"},
        {tree.typed("words.mdb"), "8", "words.mdb"},
        {application.typed("main.dat"), "8", "This is the working database"},
        {saved, "4", ""},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.path);
        dialogs.messages.clear();
        type(each.path);
        EXPECT_EQ(items(), each.items);
        EXPECT_EQ(dialogs.messages.size(), *each.message == '\0' ? 0U : 1U);
        for (const std::string& message : dialogs.messages) {
            EXPECT_THAT(message, HasSubstr(each.message));
        }
    }
    EXPECT_THAT(savedScan(), HasSubstr("saved.mdb"));
}

TEST_F(OpeningInWindow, loadsNothingWhileTheRowsAreInUse) {
    saveAndScan();
    tree.write("c/d/late.txt", "1");
    bool isTaken = true;
    duringScan([&] {
        isTaken = drop({saved});
        type(saved);
    });
    window->openPath(tree.typed("c"));
    EXPECT_FALSE(isTaken);
    EXPECT_THAT(dialogs.messages, ElementsAre(HasSubstr("cannot be loaded while a scan is running")));
    EXPECT_EQ(items(), "11") << "the scan went on";

    dialogs.messages.clear();
    dialogs.setExportOptions = [&](frmExport& box) {
        isTaken = drop({saved});
        QApplication::processEvents();
        box.findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
    };
    dialogs.file = application.typed("x.csv");
    isTaken = true;
    command("ExportText");
    EXPECT_FALSE(isTaken);
    EXPECT_THAT(dialogs.messages, IsEmpty());
    EXPECT_EQ(items(), "11");
}

} // namespace

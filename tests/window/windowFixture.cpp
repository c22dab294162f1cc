#include "window/windowFixture.h"

#include <QAction>
#include <QTest>
#include <QTimer>

#include "base/modGlobal.h"
#include "platform/files.h"
#include "support/expected.h"

void RecordingDialogs::exportOptions(clsExport& options) {
    frmExport box(options, nullptr);
    QTimer::singleShot(0, &box, [&] {
        if (setExportOptions) {
            setExportOptions(box);
        } else {
            box.findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
        }
    });
    box.exec();
}

void RecordingDialogs::settings(SettingsSheet& sheet) {
    frmSettings box(sheet, *this, nullptr);
    QTimer::singleShot(0, &box, [&] {
        if (changeSettings) {
            changeSettings(box);
        } else {
            box.accept();
        }
        if (box.isVisible()) { // refused
            box.reject();
        }
    });
    box.exec();
}

QString RecordingDialogs::folderBefore(const FolderBeforeRequest& request) {
    frmFolderBefore box(request, nullptr);
    QTimer::singleShot(0, &box, [&] {
        if (chooseFolderBefore) {
            chooseFolderBefore(box);
        }
        if (box.isVisible()) {
            box.reject();
        }
    });
    return box.exec() == QDialog::Accepted ? box.folder() : QString();
}

std::optional<ServerScan> RecordingDialogs::serverScan(const QString& url, clsUserInterface& userInterface) {
    frmServer box(url, userInterface, nullptr);
    QTimer::singleShot(0, &box, [&] {
        if (useServer) {
            useServer(box);
        }
        if (box.isVisible()) {
            box.reject();
        }
    });
    return box.exec() == QDialog::Accepted ? std::optional(box.chosen()) : std::nullopt;
}

std::string RecordingDialogs::chosen(const FileRequest& request) {
    requests.push_back(request);
    if (file.empty()) {
        throw RuntimeError(errorNumber::dialogCancelled, "Cancel was selected");
    }
    return file;
}

WindowFixture::WindowFixture() {
    platform::copyFile(templateFile(), application.internal("001.dat"));
    // The network branch would show what is mounted on this machine.
    application.write("settings.ini", "[startup]\r\ndontUseNetwork=1\r\n");
}

WindowFixture::~WindowFixture() {
    close();
}

frmMain& WindowFixture::open() {
    window = std::make_unique<frmMain>(application.internal(), dialogs);
    window->show();
    QApplication::processEvents();
    return *window;
}

std::string WindowFixture::key(std::string_view name) const {
    return modGlobal::addBackslash(tree.internal(name));
}

void WindowFixture::click(const std::string& key) {
    auto& tvw = control<FolderTree>("tvw");
    const QModelIndex node = static_cast<TreeModel*>(tvw.model())->indexOf(key);
    tvw.expand(node.parent());
    tvw.scrollTo(node);
    QTest::mouseClick(tvw.viewport(), Qt::LeftButton, {}, tvw.visualRect(node).topLeft() + QPoint(5, 5));
}

void WindowFixture::command(const char* key) const {
    auto* action = window->findChild<QAction*>(QString::fromUtf8(key));
    if (action == nullptr) {
        throw std::runtime_error(std::string("no command ") + key);
    }
    action->trigger();
}

void WindowFixture::duringScan(std::function<void()> body) {
    // The timer must survive the handling of its own signal.
    QTimer& timer = *timers.emplace_back(std::make_unique<QTimer>());
    QObject::connect(&timer, &QTimer::timeout, window.get(), [this, &timer, body = std::move(body)] {
        if (window->search().processing) {
            timer.stop();
            body();
        }
    });
    timer.start(0);
}

std::string WindowFixture::panel(int number) {
    EXPECT_TRUE(QTest::qWaitFor([this] { return !control<QTimer>("tmrStatus").isActive(); }));
    const QString name = QStringLiteral("sbPanel%1").arg(number);
    return control<QLabel>(qPrintable(name)).text().toStdString();
}

std::vector<std::string> WindowFixture::rows(const char* list) {
    const QAbstractItemModel& model = *control<QTreeView>(list).model();
    std::vector<std::string> result;
    for (int row = 0; row < model.rowCount(); ++row) {
        std::string line;
        for (int column = 0; column < model.columnCount(); ++column) {
            line += (column == 0 ? "" : "|") + model.index(row, column).data().toString().toStdString();
        }
        result.push_back(std::move(line));
    }
    return result;
}

std::vector<std::string> WindowFixture::bars() {
    std::vector<std::string> result;
    for (const ChartEntry& entry : control<FolderChart>("tc").entries()) {
        result.push_back(entry.label + "=" + valueText(entry.size));
    }
    return result;
}

std::vector<std::string> WindowFixture::query(const std::string& statement) const {
    std::vector<std::string> result;
    const auto rows = window->database().database().OpenRecordset(statement);
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        result.emplace_back(rows->Fields(0).text());
    }
    return result;
}

#include "widgets/columnChoice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QClipboard>
#include <QMenu>
#include <QTest>

#include "window/windowFixture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class FurtherColumns : public MainWindow {
protected:
    // What a person does in the menu of the header; the name of a column, or none.
    void choose(const char* column) {
        QHeaderView* const header = control<ListView>("lvwF").header();
        QTimer::singleShot(0, [&] {
            auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            for (QAction* const action : menu->actions()) {
                offered << action->text() + (action->isChecked() ? QStringLiteral("+") : QString());
                if (action->text() == QLatin1String(column)) {
                    menu->setActiveAction(action);
                    QTest::keyClick(menu, Qt::Key_Return);
                }
            }
            menu->close();
        });
        Q_EMIT header->customContextMenuRequested({5, 5});
    }
    QStringList offered;

    std::string headers() {
        const ListView& list = control<ListView>("lvwF");
        std::string result;
        for (const ListColumn& column : list.rows().columns()) {
            result.append(result.empty() ? "" : "|").append(column.header);
        }
        return result;
    }
    // The cells behind the fixed columns.
    std::vector<std::string> further() {
        const ListModel& model = control<ListView>("lvwF").rows();
        std::vector<std::string> result;
        for (int row = 0; row < model.rowCount(); ++row) {
            std::string text = model.text(row, 0) + ":";
            for (int column = 5; column < model.columnCount(); ++column) {
                text += " " + model.text(row, column);
            }
            result.push_back(text);
        }
        return result;
    }
};

constexpr const char* fixed = "Name|Size|Owner|Modified|Accessed";

TEST_F(FurtherColumns, areChosenInTheMenuOfTheHeaderAndRemembered) {
    openOnTree();
    control<QTabWidget>("XTab").setCurrentIndex(1);
    EXPECT_EQ(headers(), fixed);
    choose("Folders");
    EXPECT_EQ(offered, (QStringList{QStringLiteral("Size on Disk"), QStringLiteral("Share"),
                                    QStringLiteral("Files"), QStringLiteral("Folders")}));
    choose("Share");
    EXPECT_EQ(headers(), std::string(fixed) + "|Share|Folders");
    // 3260 bytes in all
    EXPECT_THAT(further(), ElementsAre("a: 92.3% 1", "b: 6.1% 0", "own.txt: 1.5% "));
    choose("Files");
    EXPECT_THAT(further(), ElementsAre("a: 92.3% 2 1", "b: 6.1% 1 0", "own.txt: 1.5%  "));

    // They are sorted by value, copied and filtered as the others.
    auto& list = control<ListView>("lvwF");
    Q_EMIT list.columnClicked(6);
    EXPECT_THAT(further(), ElementsAre("own.txt: 1.5%  ", "b: 6.1% 1 0", "a: 92.3% 2 1"));
    Q_EMIT list.copyRequested();
    EXPECT_THAT(QApplication::clipboard()->text().toStdString(), HasSubstr("Accessed,Share,Files,Folders"));
    list.header()->resizeSection(5, 123);
    choose("Files");
    EXPECT_THAT(further(), ElementsAre("own.txt: 1.5% ", "b: 6.1% 0", "a: 92.3% 1")) << "still by share";
    choose("Share");
    EXPECT_EQ(headers(), std::string(fixed) + "|Folders");
    EXPECT_THAT(further(), ElementsAre("a: 1", "b: 0", "own.txt: ")) << "by size again, the largest first";
    choose("Files");
    choose("Share");
    Q_EMIT list.columnClicked(6);
    EXPECT_EQ(list.header()->sectionSize(5), 123);
    window->close();
    close();

    openOnTree();
    control<QTabWidget>("XTab").setCurrentIndex(1);
    EXPECT_EQ(headers(), std::string(fixed) + "|Share|Files|Folders");
    EXPECT_EQ(control<ListView>("lvwF").header()->sectionSize(5), 123);
    EXPECT_THAT(further(), ElementsAre("own.txt: 1.5%  ", "b: 6.1% 1 0", "a: 92.3% 2 1"));
    EXPECT_THAT(settingsFile(), Not(HasSubstr("DetailListSortColumn=6"))) << "which knows the fixed columns";
}

TEST_F(FurtherColumns, followWhatIsScanned) {
    openOnTree();
    control<QTabWidget>("XTab").setCurrentIndex(1);
    choose("Share");
    choose("Files");
    tree.write("b/more", std::string(6520, 'x'));
    click(key("b"));
    pressF5();
    click(key());
    EXPECT_THAT(further(), testing::UnorderedElementsAre("a: 30.8% 2", "b: 68.7% 2", "own.txt: 0.5% "));
    window->database().database().Execute("update details set sizeOnDisk=null, fileCount=null");
    choose("Size on Disk");
    EXPECT_THAT(further(), Not(testing::Contains(HasSubstr("bytes"))))
        << "nothing is made up for older scans";
}

} // namespace

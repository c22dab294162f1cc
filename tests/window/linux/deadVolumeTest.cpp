#include <QElapsedTimer>
#include <cstdlib>

#include "base/modGlobal.h"
#include "platform/environment.h"
#include "platform/paths.h"
#include "window/windowFixture.h"

namespace {

constexpr int shortTime = 10'000; // ms; nothing here takes more than a few seconds

// The window beside a volume that does not answer; deadVolumes.py mounts one and names it.
class DeadVolume : public MainWindow {
protected:
    void SetUp() override {
        const auto mounted = platform::environmentVariable("SPANNORY_DEAD_VOLUME");
        if (!mounted) {
            GTEST_SKIP() << "no dead volume";
        }
        volume = *mounted;
        drive = platform::toInternal(volume);
        if (!drive.ends_with('\\')) {
            drive += '\\';
        }
        clock.start();
        open();
    }

    std::string nodeText() { return control<FolderTree>("tvw").text(drive).toStdString(); }

    std::string volume; // as typed
    std::string drive;
    QElapsedTimer clock;
};

// First, as from then on the volume is known to be silent.
TEST_F(DeadVolume, canBeLeftByCancelAndByClosing) {
    makeTree();
    window->openPath(tree.typed());
    duringScan([&] { command("CancelScan"); });
    click(drive);
    EXPECT_FALSE(nodeText().ends_with(" (not answering)")) << nodeText();

    duringScan([&] { click(key()); });
    click(drive);
    EXPECT_EQ(selected(), key());
    EXPECT_EQ(bars().back(), "a=3010");

    duringScan([&] { window->close(); });
    click(drive);
    QTest::qWait(0);
    EXPECT_FALSE(window->isVisible());
    EXPECT_LT(clock.elapsed(), shortTime);
}

TEST_F(DeadVolume, isADriveThatDoesNotAnswer) {
    EXPECT_LT(clock.elapsed(), shortTime);
    ASSERT_TRUE(control<FolderTree>("tvw").findNode(drive));
    click(drive);
    EXPECT_TRUE(nodeText().ends_with(" (not answering)")) << nodeText();
    EXPECT_FALSE(window->search().processing);
    EXPECT_EQ(panel(3), "The volume is not answering.");
    clock.restart();
    click(drive); // it is not asked again while it is silent
    pressF5();
    EXPECT_LT(clock.elapsed(), 1000);
    control<FolderTree>("tvw").expand(
        static_cast<TreeModel*>(control<FolderTree>("tvw").model())->indexOf(drive));
    EXPECT_TRUE(control<FolderTree>("tvw").childKeys(drive).size() <= 1);

    window->openPath(volume);
    EXPECT_EQ(dialogs.messages, std::vector{"The volume is not answering: " + volume});

    makeTree();
    window->openPath(tree.typed());
    EXPECT_EQ(bars().back(), "a=3010");
    EXPECT_LT(clock.elapsed(), shortTime);
}

TEST_F(DeadVolume, isNotWaitedForByWhatIsAbove) {
    const std::string above = volume.substr(0, volume.rfind('/'));
    window->openPath(above);
    EXPECT_EQ(selected(), modGlobal::addBackslash(platform::toInternal(above)));
    EXPECT_EQ(bars().back(), "beside=5");
    EXPECT_LT(clock.elapsed(), shortTime);
}

} // namespace

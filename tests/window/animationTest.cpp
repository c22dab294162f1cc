#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QBitmap>
#include <QTest>
#include <chrono>
#include <string>
#include <vector>

#include "base/applicationFolder.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/runtimeError.h"
#include "support/temporaryFolder.h"
#include "widgets/applicationIcon.h"
#include "window/animation.h"
#include "window/aviFile.h"

namespace {

using namespace std::string_literals;

std::string number(std::uint32_t value, int length = 4) {
    std::string bytes;
    for (int i = 0; i < length; ++i) {
        bytes += static_cast<char>(value >> (8 * i));
    }
    return bytes;
}

std::string chunk(const std::string& name, const std::string& content) {
    return name + number(static_cast<std::uint32_t>(content.size())) + content +
           std::string(content.size() % 2, 0);
}

// An animation file with one stream; each test changes the part that it tests.
struct MadeAvi {
    std::uint32_t frameTime = 50'000;
    std::int32_t width = 3;
    std::int32_t height = 2;
    std::uint32_t bits = 24;
    std::uint32_t compression = 0;
    std::uint32_t colours = 0;
    std::string streamKind = "vids";
    std::string palette{};
    std::vector<std::string> frames{std::string(24, 'a')};

    [[nodiscard]] std::string bytes() const {
        const std::string format = number(40) + number(static_cast<std::uint32_t>(width)) +
                                   number(static_cast<std::uint32_t>(height)) + number(1, 2) +
                                   number(bits, 2) + number(compression) + std::string(12, 0) +
                                   number(colours) + number(0) + palette;
        std::string movie = "movi";
        for (const std::string& frame : frames) {
            movie += chunk("00db", frame);
        }
        return chunk(
            "RIFF",
            "AVI " +
                chunk("LIST", "hdrl" + chunk("avih", number(frameTime) + std::string(52, 0)) +
                                  chunk("LIST", "strl" + chunk("strh", streamKind + std::string(52, 0)) +
                                                    chunk("strf", format))) +
                chunk("LIST", movie));
    }
};

std::string whyRefused(std::string_view bytes) {
    try {
        return "read " + std::to_string(modAvi::readAvi(bytes).frames.size()) + " frames";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), modAvi::invalidFileFormat);
        return error.what();
    }
}

// How many percent of the pixels of two pictures differ.
int percentChanged(const QImage& left, const QImage& right) {
    int changed = 0;
    const int count = left.width() * left.height();
    for (int i = 0; i < count; ++i) {
        const QColor before = left.pixelColor(i % left.width(), i / left.width());
        const QColor after = right.pixelColor(i % left.width(), i / left.width());
        changed +=
            std::abs(before.red() - after.red()) + std::abs(before.green() - after.green()) > 70 ? 1 : 0;
    }
    return changed * 100 / count;
}

// The area with any painted pixels.
QRect paintedArea(const QImage& image) {
    return QRegion(QBitmap::fromImage(image.createAlphaMask())).boundingRect();
}

QImage shownBy(Animation& animation) {
    QImage image(animation.size() * 2, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(2);
    image.fill(Qt::transparent);
    animation.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

std::string builtAnimation() {
    return platform::executableFolder() + "2.avi";
}

} // namespace

TEST(AviFile, readsEveryDepthAndDirection) {
    // A line of the colours k, r, b above a line of r, k, k; k is the key.
    const std::string k24("\x10\x20\x30", 3);
    const std::string r24("\x00\x00\xff", 3);
    const std::string b24("\xff\x00\x00", 3);
    const std::string gap24(3, 'x');
    const std::string gap32(1, '\x7f');
    const MadeAvi cases[] = {
        {.frames = {r24 + k24 + k24 + gap24 + k24 + r24 + b24 + gap24}},
        {.height = -2, .frames = {k24 + r24 + b24 + gap24 + r24 + k24 + k24 + gap24}},
        {.bits = 32,
         .frames = {r24 + gap32 + k24 + gap32 + k24 + gap32 + k24 + gap32 + r24 + gap32 + b24 + gap32}},
        {.bits = 8,
         .colours = 3,
         .palette = r24 + '\0' + k24 + '\0' + b24 + '\0',
         .frames = {"\0\1\1x\1\0\2x"s}},
    };
    for (MadeAvi made : cases) {
        SCOPED_TRACE(made.bits);
        made.frames.emplace_back(); // an empty chunk repeats the picture
        const AviClip clip = modAvi::readAvi(made.bytes());
        ASSERT_EQ(clip.frames.size(), 2U);
        EXPECT_EQ(clip.frameTime, std::chrono::milliseconds(50));
        std::vector<QRgb> pixels;
        for (int i = 0; i < 6; ++i) {
            pixels.push_back(clip.frames[1].pixel(i % 3, i / 3));
        }
        constexpr QRgb red = 0xffff0000;
        EXPECT_THAT(pixels, testing::ElementsAre(0U, red, 0xff0000ffU, red, 0U, 0U));
    }
}

TEST(AviFile, refusesWhatIsNone) {
    const struct {
        std::string bytes;
        const char* why;
    } cases[] = {
        {"", "not an animation"},
        {"\x89PNG" + std::string(100, 'x'), "not an animation"},
        {"RIFF" + number(4) + "WAVE", "no part \"AVI \""},
        {"RIFF" + number(0xffffffff) + "AVI LIST", "cut off"},
        {"RIFF" + number(2) + "AV", "list without a type"},
        {MadeAvi{.streamKind = "auds"}.bytes(), "no part \"strl\""},
        {MadeAvi{.width = 0}.bytes(), "0 by 2 pixels"},
        {MadeAvi{.width = -3}.bytes(), "-3 by 2 pixels"},
        {MadeAvi{.width = 0x7fffffff, .height = 0x7fffffff}.bytes(), "pixels"},
        {MadeAvi{.height = INT32_MIN}.bytes(), "pixels"},
        {MadeAvi{.bits = 16}.bytes(), "only uncompressed"},
        {MadeAvi{.compression = 0x44495658}.bytes(), "only uncompressed"},
        {MadeAvi{.bits = 8, .colours = 2, .palette = "short"}.bytes(), "too short"},
        {MadeAvi{.frames = {}}.bytes(), "no frames"},
        {MadeAvi{.frames = {""}}.bytes(), "frame is too short"},
        {MadeAvi{.frames = {std::string(24, 'a'), std::string(23, 'a')}}.bytes(), "frame is too short"},
        {MadeAvi{.frames = {20'000, std::string(24, 'a')}}.bytes(), "too long"},
        {MadeAvi{.width = 1000, .height = 1000, .bits = 32, .frames = {17, std::string(4'000'000, 'a')}}
             .bytes(),
         "too long"},
    };
    for (const auto& [bytes, why] : cases) {
        EXPECT_THAT(whyRefused(bytes), testing::HasSubstr(why));
    }
    const std::string whole = MadeAvi().bytes();
    EXPECT_EQ(whyRefused(whole), "read 1 frames");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_THAT(whyRefused(whole.substr(0, length)), testing::StartsWith("Invalid file format: "))
            << length;
    }
}

TEST(Animation, builtOneIsASmoothLoopOnTransparentGround) {
    const AviClip clip = modAvi::readAvi(platform::readFile(builtAnimation(), modAvi::longestFile));
    ASSERT_EQ(clip.frames.size(), 24U);
    for (std::size_t i = 0; i < clip.frames.size(); ++i) {
        const QImage& frame = clip.frames[i];
        EXPECT_EQ(qAlpha(frame.pixel(0, 0)), 0);
        EXPECT_EQ(qAlpha(frame.pixel(32, 58)), 255);
        const int moved = percentChanged(frame, clip.frames[(i + 1) % clip.frames.size()]);
        EXPECT_TRUE(moved > 0 && moved < 15) << i << ": " << moved << " %";
    }
}

TEST(Animation, followsTheClockWhenTicksComeLate) {
    std::chrono::nanoseconds now{};
    Animation animation(nullptr, [&now] { return now; });
    animation.open(builtAnimation());
    animation.resize(60, 20);
    EXPECT_EQ(paintedArea(shownBy(animation)), QRect());
    animation.play();
    QApplication::processEvents();
    // As large as fits, in the middle, and square like its frames.
    const QRect playing = paintedArea(shownBy(animation));
    EXPECT_TRUE(QRect(40, 0, 40, 40).contains(playing) && playing.width() > 30) << playing.width();

    now += std::chrono::milliseconds(401); // a large folder: as long as six frames of a fifteenth of a second
    animation.play();                      // another scan starts meanwhile
    EXPECT_TRUE(QTest::qWaitFor([&] { return animation.frame() == 6; }));

    animation.stop();
    EXPECT_EQ(paintedArea(shownBy(animation)), QRect());
}

TEST(Animation, playsNothingAfterAFileThatIsNone) {
    const TemporaryFolder folder;
    folder.write("2.avi", "RIFFgarbage");
    Animation animation;
    animation.resize(32, 32);
    for (const char* name : {"missing.avi", "2.avi"}) {
        animation.open(builtAnimation());
        animation.play();
        EXPECT_THROW(animation.open(folder.internal(name)), RuntimeError);
        animation.play();
        EXPECT_FALSE(animation.isPlaying());
        EXPECT_EQ(paintedArea(shownBy(animation)), QRect());
    }
}

TEST(Animation, isTakenFromTheApplicationFolderElseFromBesideTheProgram) {
    const TemporaryFolder folder;
    EXPECT_EQ(findDataFile(folder.internal(), "2.avi"), builtAnimation());
    EXPECT_EQ(findDataFile(folder.internal(), "3.avi"), folder.internal("3.avi"));
    folder.write("2.avi", "");
    EXPECT_EQ(findDataFile(folder.internal(), "2.avi"), folder.internal("2.avi"));
}

TEST(ApplicationIcon, fillsItsSquareAtEverySize) {
    const QIcon icon = applicationIcon();
    for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
        const QImage image = icon.pixmap(side, side).toImage();
        const QRect area = paintedArea(image);
        ASSERT_EQ(image.width(), side);
        EXPECT_LE(std::abs(area.left() - (side - 1 - area.right())), 1) << side;
        EXPECT_LE(std::abs(area.top() - (side - 1 - area.bottom())), 1) << side;
        EXPECT_GE(area.width() * 5, side * 4) << side;
    }
}

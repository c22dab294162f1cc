#include "window/menu/menuIcons.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QProxyStyle>
#include <QStyleOption>
#include <memory>

namespace {

// A style whose menus paint their own background below the item under the pointer.
class GroundStyle final : public QProxyStyle {
public:
    explicit GroundStyle(const QColor& ground) : QProxyStyle(QStringLiteral("Fusion")), ground_(ground) {}

    void drawControl(ControlElement, const QStyleOption* option, QPainter* painter,
                     const QWidget*) const override {
        painter->fillRect(option->rect, ground_);
    }

private:
    QColor ground_;
};

TEST(MenuIcons, canBeReadOnWhatTheStyleLaysBelowThem) {
    constexpr int leastContrast = 120;
    for (const QColor& ground : {QColor(0xE5, 0xF3, 0xFF), QColor(0x10, 0x50, 0xA0)}) {
        QApplication::setStyle(std::make_unique<GroundStyle>(ground).release()); // the application deletes it
        const QIcon icon = modMenuIcons::icon(modMenuIcons::Picture::refresh, modMenuIcons::Place::menu);
        const QImage drawn = icon.pixmap(QSize(32, 32), QIcon::Active).toImage();
        int strokes = 0;
        for (int i = 0; i < drawn.width() * drawn.height(); ++i) {
            const QColor pixel = drawn.pixelColor(i % drawn.width(), i / drawn.width());
            if (pixel.alpha() == 255) {
                ++strokes;
                EXPECT_GT(std::abs(qGray(pixel.rgb()) - qGray(ground.rgb())), leastContrast);
            }
        }
        EXPECT_GT(strokes, 0);
    }
    QApplication::setStyle(QStringLiteral("Fusion"));
}

// The same icon, kept by its command, is drawn anew.
TEST(MenuIcons, areVisibleInEveryPalette) {
    constexpr int leastContrast = 90;
    const QPalette before = QApplication::palette();
    const QIcon icon = modMenuIcons::icon(modMenuIcons::Picture::barChart, modMenuIcons::Place::menu);
    for (const auto& [window, text] : {std::pair(QColor(0xEF, 0xEF, 0xEF), QColor(Qt::black)),
                                       std::pair(QColor(0x2A, 0x2A, 0x2A), QColor(Qt::white))}) {
        QPalette palette;
        palette.setColor(QPalette::Window, window);
        palette.setColor(QPalette::WindowText, text);
        QApplication::setPalette(palette);
        const QImage drawn = icon.pixmap(QSize(32, 32)).toImage();
        int strokes = 0;
        for (int i = 0; i < drawn.width() * drawn.height(); ++i) {
            const QColor pixel = drawn.pixelColor(i % drawn.width(), i / drawn.width());
            if (pixel.alpha() == 255) {
                ++strokes;
                EXPECT_GT(std::abs(qGray(pixel.rgb()) - qGray(window.rgb())), leastContrast);
            }
        }
        EXPECT_GT(strokes, 0);
    }
    QApplication::setPalette(before);
}

} // namespace

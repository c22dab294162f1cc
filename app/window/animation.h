#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QPixmap>
#include <QSize>
#include <QWidget>
#include <string_view>
#include <vector>

#include "app/window/aviFile.h"

// Plays a short animation in a loop, as large as fits, and shows nothing while stopped. Frames follow the
// clock, not the number of ticks that arrive, for a scan lets events through only once per folder.
class Animation final : public QWidget {
    Q_OBJECT

public:
    explicit Animation(QWidget* parent = nullptr);

    // Takes the animation of the file (an internal path), stopped. Throws RuntimeError when it cannot be read
    // or is none; then there is nothing to play, and play() does nothing.
    void open(std::string_view path);

    // Begins with the first frame; goes on when it is playing already.
    void play();
    void stop();
    [[nodiscard]] bool isPlaying() const { return ticks_.isActive(); }

    // The number of the frame last shown, from 0.
    [[nodiscard]] std::size_t frame() const { return frame_; }

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    [[nodiscard]] std::size_t frameNow() const;
    [[nodiscard]] const QPixmap& scaledFrame();

    AviClip clip_;
    std::vector<QPixmap> scaled_; // the frames as the screen shows them, each made when first needed
    QSize scaledSize_;            // in the screen's own pixels
    QElapsedTimer sincePlay_;
    QBasicTimer ticks_;
    std::size_t frame_ = 0;
};

#pragma once

#include <QBasicTimer>
#include <QPixmap>
#include <QSize>
#include <QWidget>
#include <chrono>
#include <functional>
#include <string_view>
#include <vector>

#include "window/aviFile.h"

// Plays a short animation in a loop, as large as fits, and shows nothing while stopped. Frames follow the
// clock, not the number of timer ticks, because a scan handles events only once per folder.
class Animation final : public QWidget {
    Q_OBJECT

public:
    // The time since some fixed moment.
    using Clock = std::function<std::chrono::nanoseconds()>;

    explicit Animation(QWidget* parent = nullptr, Clock clock = steadyTime);

    // Loads the animation from the file (an internal path), stopped. Throws RuntimeError if the file cannot
    // be read or is not an animation; play() then does nothing.
    void open(std::string_view path);

    // Starts with the first frame; if it is already playing, continues.
    void play();
    void stop();
    [[nodiscard]] bool isPlaying() const { return ticks_.isActive(); }

    // The number of the frame shown last, from 0.
    [[nodiscard]] std::size_t frame() const { return frame_; }

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    [[nodiscard]] static std::chrono::nanoseconds steadyTime();
    [[nodiscard]] std::size_t frameNow() const;
    [[nodiscard]] const QPixmap& scaledFrame();

    AviClip clip_;
    std::vector<QPixmap> scaled_; // the frames scaled for the screen, created when needed
    QSize scaledSize_;            // in device pixels
    Clock clock_;
    std::chrono::nanoseconds playedFrom_{}; // by the clock
    QBasicTimer ticks_;
    std::size_t frame_ = 0;
};

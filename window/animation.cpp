#include "window/animation.h"

#include <QPainter>
#include <QTimerEvent>
#include <utility>

#include "platform/fileError.h"
#include "platform/files.h"

Animation::Animation(QWidget* parent, Clock clock) : QWidget(parent), clock_(std::move(clock)) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::NoFocus);
}

void Animation::open(std::string_view path) {
    stop();
    clip_ = {};
    scaled_.clear();
    const std::string bytes = platform::readFile(path, modAvi::longestFile);
    try {
        clip_ = modAvi::readAvi(bytes);
    } catch (const RuntimeError& error) {
        throw platform::fileError(error.number(), error.what(), path, platform::NotDone::read);
    }
}

void Animation::play() {
    if (isPlaying() || clip_.frames.empty()) {
        return;
    }
    using std::chrono::duration_cast;
    frame_ = 0;
    playedFrom_ = clock_();
    ticks_.start(static_cast<int>(duration_cast<std::chrono::milliseconds>(clip_.frameTime).count()),
                 Qt::PreciseTimer, this);
    update();
}

void Animation::stop() {
    ticks_.stop();
    update();
}

QSize Animation::sizeHint() const {
    return {32, 32};
}

std::chrono::nanoseconds Animation::steadyTime() {
    return std::chrono::steady_clock::now().time_since_epoch();
}

std::size_t Animation::frameNow() const {
    const auto elapsed = clock_() - playedFrom_;
    return static_cast<std::size_t>(elapsed / clip_.frameTime) % clip_.frames.size();
}

void Animation::timerEvent(QTimerEvent* event) {
    if (event->timerId() != ticks_.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    const std::size_t now = frameNow();
    if (now != frame_) {
        frame_ = now;
        update();
    }
}

const QPixmap& Animation::scaledFrame() {
    const QImage& frame = clip_.frames[frame_];
    const QSize size = frame.size().scaled(this->size() * devicePixelRatioF(), Qt::KeepAspectRatio);
    if (size != scaledSize_ || scaled_.size() != clip_.frames.size()) {
        scaled_.assign(clip_.frames.size(), {});
        scaledSize_ = size;
    }
    QPixmap& pixmap = scaled_[frame_];
    if (pixmap.isNull()) {
        pixmap = QPixmap::fromImage(frame.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }
    pixmap.setDevicePixelRatio(devicePixelRatioF());
    return pixmap;
}

void Animation::paintEvent(QPaintEvent*) {
    if (!isPlaying()) {
        return;
    }
    const QPixmap& pixmap = scaledFrame();
    const QSizeF shown = pixmap.deviceIndependentSize();
    QPainter(this).drawPixmap(QPointF((width() - shown.width()) / 2, (height() - shown.height()) / 2),
                              pixmap);
}

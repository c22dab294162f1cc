#include "window/statusPanels.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <memory>

#include "widgets/qtText.h"

namespace {

constexpr int millisecondsBetweenShows = 17;

// Some styles draw a frame around each panel, in addition to the lines between them.
void takeFramesAway(QStatusBar& statusBar) {
    statusBar.setStyleSheet({});
    statusBar.setStyleSheet(QStringLiteral("QStatusBar::item { border: none; }"));
}

// What has a style sheet keeps the colours that it had when it got the sheet.
class PaletteFollower final : public QObject {
public:
    explicit PaletteFollower(QStatusBar& statusBar) : QObject(&statusBar), statusBar_(statusBar) {
        QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::ApplicationPaletteChange && watched == QCoreApplication::instance()) {
            takeFramesAway(statusBar_);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QStatusBar& statusBar_;
};

} // namespace

QSize CutLabel::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

void CutLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect room = rect().adjusted(std::max(indent(), 0), 0, 0, 0);
    const QString cut = fontMetrics().elidedText(text(), cutAt_, room.width());
    style()->drawItemText(&painter, room, static_cast<int>(alignment()), palette(), isEnabled(), cut,
                          foregroundRole());
}

StatusPanels::StatusPanels(QStatusBar& statusBar) {
    takeFramesAway(statusBar);
    static_cast<void>(std::make_unique<PaletteFollower>(statusBar).release()); // the status bar deletes it
    constexpr std::array stretches{0, 0, 1, 0};
    constexpr std::array widestTexts{"1,000,000,000 items.", "1,000,000 files/sec", "",
                                     "1,000,000 folders could not be read."};
    for (std::size_t panel = 0; panel < panelCount; ++panel) {
        CutLabel& label = labels_.at(panel);
        label.setObjectName(QStringLiteral("sbPanel%1").arg(panel + 1));
        label.setTextFormat(Qt::PlainText);
        label.setMinimumWidth(
            label.fontMetrics().horizontalAdvance(QString::fromUtf8(widestTexts.at(panel))));
        if (panel > 0) {
            QFrame& line = lines_.at(panel - 1);
            line.setFrameStyle(QFrame::VLine | QFrame::Sunken);
            statusBar.addWidget(&line);
        }
        statusBar.addWidget(&label, stretches.at(panel));
    }
    labels_.back().hide();
    lines_.back().hide();
    sinceShown_.start();
    later_.setParent(&statusBar);
    later_.setObjectName(QStringLiteral("tmrStatus"));
    later_.setSingleShot(true);
    later_.setInterval(millisecondsBetweenShows);
    QObject::connect(&later_, &QTimer::timeout, &later_, [this] { show(); });
}

void StatusPanels::set(StatusPanel panel, std::string_view text) {
    texts_.at(static_cast<std::size_t>(panel) - 1).assign(text);
    if (sinceShown_.elapsed() >= millisecondsBetweenShows) {
        show();
    } else if (!later_.isActive()) {
        later_.start();
    }
}

void StatusPanels::show() {
    later_.stop();
    for (std::size_t panel = 0; panel < panelCount; ++panel) {
        const QString text = modQt::shownText(texts_.at(panel));
        CutLabel& label = labels_.at(panel);
        if (label.text() != text) {
            label.setText(text);
            label.setToolTip(modQt::tip(text));
        }
    }
    labels_.back().setVisible(!texts_.back().empty());
    lines_.back().setVisible(!texts_.back().empty());
    sinceShown_.start();
}

#pragma once

#include <QElapsedTimer>
#include <QFrame>
#include <QLabel>
#include <QStatusBar>
#include <QTimer>
#include <array>
#include <string>
#include <string_view>

#include "base/clsUserInterface.h"

// A label with one line of text. If there is not enough room, the text is cut, in the middle unless another
// place is set, and a tip shows it in full.
class CutLabel final : public QLabel {
public:
    using QLabel::QLabel;
    void setCutAt(Qt::TextElideMode place) { cutAt_ = place; }
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Qt::TextElideMode cutAt_ = Qt::ElideMiddle;
};

// The texts of the status bar. A scan sets them once per folder, but at most 60 per second are shown.
class StatusPanels {
public:
    // Adds the labels sbPanel1 to sbPanel4 to the bar, which must outlive this. The last one, for remarks, is
    // hidden while it is empty.
    explicit StatusPanels(QStatusBar& statusBar);

    void set(StatusPanel panel, std::string_view text);

    // Shows the texts that were set.
    void show();

private:
    static constexpr std::size_t panelCount = 4;

    std::array<CutLabel, panelCount> labels_;
    std::array<QFrame, panelCount - 1> lines_; // between the labels
    std::array<std::string, panelCount> texts_;
    QElapsedTimer sinceShown_;
    QTimer later_; // tmrStatus; runs while there are texts to show
};

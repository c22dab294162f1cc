#pragma once

#include <QElapsedTimer>
#include <QFrame>
#include <QLabel>
#include <QStatusBar>
#include <QTimer>
#include <array>
#include <string>
#include <string_view>

#include "app/clsUserInterface.h"

// A label of one line, whose text is cut in its middle where there is no room and then shown whole as a tip.
class CutLabel final : public QLabel {
public:
    using QLabel::QLabel;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

// The texts of the status bar. A scan sets them once per folder; they are shown at most 60 times a second.
class StatusPanels {
public:
    // The labels sbPanel1 to sbPanel3 go into the bar, which must outlive this.
    explicit StatusPanels(QStatusBar& statusBar);

    void set(StatusPanel panel, std::string_view text);

    // Shows what was set.
    void show();

private:
    static constexpr std::size_t panelCount = 3;

    std::array<CutLabel, panelCount> labels_;
    std::array<QFrame, panelCount - 1> lines_; // between them
    std::array<std::string, panelCount> texts_;
    QElapsedTimer sinceShown_;
    QTimer later_; // tmrStatus; runs while there are texts to be shown
};

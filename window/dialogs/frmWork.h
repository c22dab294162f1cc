#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <atomic>

// Stands above the window while long work goes on there that can be cancelled: what is done, how far it is,
// and Cancel. It appears when the work has taken some time, and holds all other input away.
class frmWork final : public QDialog {
    Q_OBJECT

public:
    static constexpr int millisecondsBefore = 400; // it appears

    frmWork(const QString& text, QWidget* parent);

    void setText(const QString& text) { lblWork_.setText(text); }
    // 0 steps for a bar that moves by itself.
    void setProgress(int step, int steps);
    // To be called whenever the work lets events be handled.
    void showIfLong();

    [[nodiscard]] bool isCancelled() const noexcept { return isCancelled_; }

    void reject() override; // Escape, the button and the title bar

private:
    QVBoxLayout layout_{this};
    QLabel lblWork_;
    QProgressBar prgWork_;
    QPushButton cmdCancelWork_;
    QElapsedTimer since_;
    std::atomic<bool> isCancelled_ = false; // other threads may ask
};

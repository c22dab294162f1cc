#include "window/dialogs/frmWork.h"

#include "widgets/helpTopic.h"

frmWork::frmWork(const QString& text, QWidget* parent) : QDialog(parent) {
    constexpr int characters = 60;
    setObjectName(QStringLiteral("frmWork"));
    setWindowTitle(QStringLiteral("Spannory"));
    setWindowModality(Qt::WindowModal);
    modQt::setHelpTopic(*this, "changes.html");
    lblWork_.setObjectName(QStringLiteral("lblWork"));
    lblWork_.setTextFormat(Qt::PlainText);
    lblWork_.setText(text);
    lblWork_.setWordWrap(true);
    lblWork_.setMinimumWidth(characters * fontMetrics().averageCharWidth());
    prgWork_.setObjectName(QStringLiteral("prgWork"));
    prgWork_.setAccessibleName(QStringLiteral("Progress"));
    prgWork_.setRange(0, 0);
    cmdCancelWork_.setObjectName(QStringLiteral("cmdCancelWork"));
    cmdCancelWork_.setText(QStringLiteral("Cancel"));
    layout_.addWidget(&lblWork_);
    layout_.addWidget(&prgWork_);
    layout_.addWidget(&cmdCancelWork_, 0, Qt::AlignRight);
    connect(&cmdCancelWork_, &QPushButton::clicked, this, &frmWork::reject);
    since_.start();
}

void frmWork::setProgress(int step, int steps) {
    prgWork_.setRange(0, steps);
    prgWork_.setValue(step);
}

void frmWork::showIfLong() {
    if (!isVisible() && !isCancelled_ && since_.hasExpired(millisecondsBefore)) {
        show();
        setCursor(Qt::ArrowCursor);
    }
}

void frmWork::reject() {
    isCancelled_ = true;
    QDialog::reject();
}

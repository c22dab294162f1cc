#include "window/dialogs/frmAbout.h"

#include <QApplication>
#include <QFont>
#include <QIcon>

#include "widgets/helpTopic.h"

namespace {

constexpr int pictureSize = 64;

QFont nameFont(const QFont& font) {
    QFont large = font;
    large.setBold(true);
    large.setPointSizeF(font.pointSizeF() * 1.8);
    return large;
}

QString aboutText() {
    return QStringLiteral("Shows what uses the space on a disk.\n\n"
                          "Built with Qt %1, SQLite, pugixml, libxlsxwriter and CLI11.\n\n"
                          "© 2026 The Spannory developers. Free software under the MIT licence,\n"
                          "without warranty of any kind.")
        .arg(QString::fromUtf8(qVersion()));
}

} // namespace

frmAbout::frmAbout(QWidget* parent) : QDialog(parent), layout_(this) {
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("About Spannory"));
    modQt::setHelpTopic(*this, "welcome.html");

    picture_.setPixmap(
        QApplication::windowIcon().pixmap(QSize(pictureSize, pictureSize), devicePixelRatio()));
    picture_.setHidden(QApplication::windowIcon().isNull());
    lblName_.setText(QStringLiteral("Spannory"));
    lblName_.setFont(nameFont(font()));
    lblVersion_.setObjectName(QStringLiteral("lblVersion"));
    // The leading blank separates it from the name.
    lblVersion_.setText(QStringLiteral(" Version ") + QString::fromUtf8(SPANNORY_VERSION));
    lblVersion_.setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblText_.setText(aboutText());

    cmdOK_.setObjectName(QStringLiteral("cmdOK"));
    cmdOK_.setText(QStringLiteral("OK"));
    cmdOK_.setDefault(true);
    buttons_.addButton(&cmdOK_, QDialogButtonBox::AcceptRole);
    connect(&buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);

    constexpr int margin = 20;
    layout_.setContentsMargins(margin, margin, margin, margin);
    layout_.setHorizontalSpacing(margin);
    layout_.setSizeConstraint(QLayout::SetFixedSize);
    title_.setSpacing(0);
    title_.addWidget(&lblName_, 0, Qt::AlignBaseline);
    title_.addWidget(&lblVersion_, 1, Qt::AlignBaseline);
    layout_.addWidget(&picture_, 0, 0, 2, 1, Qt::AlignTop);
    layout_.addLayout(&title_, 0, 1);
    layout_.addWidget(&lblText_, 1, 1);
    layout_.setRowMinimumHeight(2, margin / 2);
    layout_.addWidget(&buttons_, 3, 0, 1, 2);
    cmdOK_.setFocus();
}

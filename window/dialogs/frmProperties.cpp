#include "window/dialogs/frmProperties.h"

#include <QLabel>
#include <memory>

#include "widgets/helpTopic.h"
#include "widgets/qtText.h"

frmProperties::frmProperties(const PropertyRows& rows, QWidget* parent) : QDialog(parent), layout_(this) {
    constexpr int longestLine = 60; // in average characters; longer paths are wrapped
    setObjectName(QStringLiteral("frmProperties"));
    setWindowTitle(QStringLiteral("Properties"));
    modQt::setHelpTopic(*this, "files.html");
    for (const auto& [name, value] : rows) {
        auto text = std::make_unique<QLabel>(modQt::shownText(value));
        text->setObjectName(QString::fromStdString(name));
        text->setTextFormat(Qt::PlainText);
        text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        text->setWordWrap(text->sizeHint().width() > fontMetrics().averageCharWidth() * longestLine);
        text->setMinimumWidth(fontMetrics().averageCharWidth() * longestLine / 2);
        layout_.addRow(QString::fromStdString(name) + u':', text.release()); // the layout owns it
    }
    cmdClose_.setObjectName(QStringLiteral("cmdClose"));
    cmdClose_.setText(QStringLiteral("Close"));
    cmdClose_.setDefault(true);
    buttons_.addButton(&cmdClose_, QDialogButtonBox::RejectRole);
    connect(&buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout_.addRow(&buttons_);
    cmdClose_.setFocus();
}

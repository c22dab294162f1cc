#include "window/dialogs/frmProperties.h"

#include <QLabel>
#include <QScreen>
#include <algorithm>
#include <memory>

#include "widgets/helpTopic.h"
#include "widgets/qtText.h"

frmProperties::frmProperties(const PropertyRows& rows, QWidget* parent) : QDialog(parent), layout_(this) {
    constexpr int mostCharacters = 60; // longer paths are wrapped
    const int longestLine = std::min(mostCharacters * fontMetrics().averageCharWidth(),
                                     screen()->availableSize().width() / 2); // beside the names
    setObjectName(QStringLiteral("frmProperties"));
    setWindowTitle(QStringLiteral("Properties"));
    modQt::setHelpTopic(*this, "files.html");
    for (const auto& [name, value] : rows) {
        auto text = std::make_unique<QLabel>(modQt::shownText(value));
        text->setObjectName(QString::fromStdString(name));
        text->setTextFormat(Qt::PlainText);
        text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        text->setWordWrap(text->sizeHint().width() > longestLine);
        text->setMinimumWidth(longestLine / 2);
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

#include "app/window/qtDialogs.h"

#include <QApplication>
#include <QMessageBox>

#include "app/window/frmAbout.h"

namespace {

// The pointer as it is everywhere else while a box waits for an answer in the midst of long work.
class PlainPointer {
public:
    PlainPointer() { QApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~PlainPointer() { QApplication::restoreOverrideCursor(); }
    PlainPointer(const PlainPointer&) = delete;
    PlainPointer& operator=(const PlainPointer&) = delete;
};

int showBox(QWidget* parent, const QString& text, QMessageBox::Icon icon,
            QMessageBox::StandardButtons buttons) {
    const PlainPointer pointer;
    QMessageBox box(icon, QStringLiteral("Spannory"), text, buttons, parent);
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    return box.exec();
}

} // namespace

void QtDialogs::message(const QString& text) {
    showBox(parent_, text, QMessageBox::Information, QMessageBox::Ok);
}

bool QtDialogs::ask(const QString& text) {
    return showBox(parent_, text, QMessageBox::Question, QMessageBox::Yes | QMessageBox::No) ==
           QMessageBox::Yes;
}

void QtDialogs::about() {
    frmAbout box(parent_);
    box.exec();
}

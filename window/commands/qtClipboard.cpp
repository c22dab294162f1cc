#include "window/commands/qtClipboard.h"

#include <QClipboard>
#include <QGuiApplication>

void QtClipboard::clear() {
    QGuiApplication::clipboard()->clear();
}

void QtClipboard::setText(std::string_view text) {
    QGuiApplication::clipboard()->setText(QString::fromUtf8(text));
}

#include "window/help/helpPage.h"

#include <QEvent>
#include <QPalette>
#include <QTextDocument>

HelpPage::HelpPage(QWidget* parent) : QTextBrowser(parent) {
    constexpr int margin = 16;
    setFrameShape(QFrame::NoFrame);
    document()->setDocumentMargin(margin);
}

// The pages' own colours are for a light background; on a dark one, headings get the colour of links.
QVariant HelpPage::loadResource(int type, const QUrl& name) {
    QVariant resource = QTextBrowser::loadResource(type, name);
    const bool dark =
        palette().color(QPalette::Base).lightness() < palette().color(QPalette::Text).lightness();
    if (type == QTextDocument::StyleSheetResource && dark) {
        return QString::fromUtf8(resource.toByteArray()) +
               QStringLiteral("h1, h2 { color: %1; }").arg(palette().color(QPalette::Link).name());
    }
    return resource;
}

void HelpPage::changeEvent(QEvent* event) {
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && !source().isEmpty()) {
        reload();
    }
}

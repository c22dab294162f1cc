#pragma once

#include <QTextBrowser>

// Shows a help page in colours that suit the palette.
class HelpPage final : public QTextBrowser {
    Q_OBJECT

public:
    explicit HelpPage(QWidget* parent = nullptr);

protected:
    QVariant loadResource(int type, const QUrl& name) override;
    void changeEvent(QEvent* event) override;
};

#pragma once

#include <QAction>
#include <QLineEdit>
#include <QMainWindow>
#include <QSplitter>
#include <QString>
#include <QTextDocument>
#include <QToolBar>
#include <QTreeWidget>
#include <QUrl>

#include "app/window/helpPage.h"

// The help window: the contents at the left, a page at the right, a way back and forward, and a search on the
// page. A window of its own that remembers nothing; the program does not wait for it to be closed.
class frmHelp final : public QMainWindow {
    Q_OBJECT

public:
    // The folder, as the system writes it, holds the pages and spannory.hhc, their contents. Where these are
    // missing the window opens and says so on its page.
    explicit frmHelp(QString folder, QWidget* parent = nullptr);

    // Shows a page by its file's name.
    void showPage(const QString& page);

private:
    void buildToolbar();
    void buildContents();
    void buildKeys();
    void addContents(const QString& text);
    void showMissing(const QString& page);
    void pageChanged(const QUrl& url);
    void goHome();
    void goToFind();
    void find(QTextDocument::FindFlags flags);

    QString folder_;
    QToolBar tbrHelp_;
    QAction back_;
    QAction forward_;
    QAction home_;
    QWidget space_;
    QLineEdit txtFind_;
    QSplitter splitter_;
    QTreeWidget tvwContents_;
    HelpPage txtPage_;
};

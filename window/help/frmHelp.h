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

#include "window/help/helpPage.h"

// The help window: the contents on the left, a page on the right, back and forward, and a search on the page.
// A separate window that remembers nothing; the program does not wait until it is closed.
class frmHelp final : public QMainWindow {
    Q_OBJECT

public:
    // The folder, in the system's form, contains the pages and spannory.hhc, their contents. If these are
    // missing, the window opens and its page says so.
    explicit frmHelp(QString folder, QWidget* parent = nullptr);

    // Shows the page with this file name.
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

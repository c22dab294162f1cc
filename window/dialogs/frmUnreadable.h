#pragma once

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <string>

#include "widgets/listView.h"
#include "widgets/systemIcons.h"

class FigureGaps;

// The window that lists the folders and files that a scan could not read, and the folders that it left out
// because they are on other volumes. It is not modal: show it, and fill it again when the folders change.
class frmUnreadable final : public QDialog {
    Q_OBJECT

public:
    explicit frmUnreadable(QWidget* parent);

    // Unreadable folders come first, then files, unless the user has sorted the list. The selection stays
    // with its row.
    // What could not be read of loaded rows is not known.
    void fill(const FigureGaps& gaps, bool withLoadedRows = false);

Q_SIGNALS:
    // Enter or a double click on a row: the folder, or the one that the file is in, as an internal path with
    // a trailing "\".
    void folderChosen(const std::string& key);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void layOut();
    void select(const std::string& key, int otherwise);
    void copyList();

    QVBoxLayout layout_;
    QLabel lblUnreadable_;
    ImageList images_;
    ListView lvwUnreadable_;
    QDialogButtonBox buttons_;
    QPushButton cmdCopy_;
    QPushButton cmdClose_;
};

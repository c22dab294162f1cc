#pragma once

#include <QHBoxLayout>
#include <QLabel>
#include <QSettings>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWidget>
#include <functional>
#include <span>
#include <string>

#include "widgets/changesList.h"
#include "widgets/listView.h"
#include "widgets/rowIcons.h"
#include "widgets/systemIcons.h"
#include "window/tabs/openComparison.h"

// The tab Changes: what of the selected folder differs from a saved scan. Of a folder that is gone, which the
// tree cannot show, it shows the former contents inside the tab. Errors are logged.
class ChangesPage final : public QWidget {
    Q_OBJECT

public:
    // Nothing is owned.
    struct Dependencies {
        ImageList& icons;
        const OpenComparison& open;
        std::function<std::string()> folderKey; // the selected folder; empty for none
    };

    explicit ChangesPage(Dependencies dependencies);
    ~ChangesPage() override;

    [[nodiscard]] ListView& list() noexcept { return lvwChanges_; }
    [[nodiscard]] const ListView& list() const noexcept { return lvwChanges_; }
    // The folder whose changes are listed.
    [[nodiscard]] const std::string& shownFolder() const noexcept { return shown_; }

    // Lists the changes of the selected folder, if it is another one than before, or the comparison is.
    void refresh();
    // Empties the list.
    void clear();
    // Goes into a folder that is gone.
    void enterFormer(const std::string& key);
    // Leaves it again; false if the list is that of the selected folder.
    bool goUp();
    void fetchIcons() { icons_.fetch(); }

    void restore(const QSettings& state);
    void save(QSettings& state) const;

Q_SIGNALS:
    // A row was activated, unless it is that of a folder that is gone.
    void itemActivated(const std::string& key, const std::string& tag);

private:
    void layOut();
    void wire();
    void fill(const std::string& selectedRow);
    [[nodiscard]] QString answerText(std::span<const modChanges::Change> changes) const;

    Dependencies dependencies_;
    QVBoxLayout layout_{this};
    QHBoxLayout head_;
    QToolButton cmdFormerUp_;
    QLabel lblChanges_;
    ListView lvwChanges_;
    RowIcons icons_;
    std::string selected_;                 // the selected folder for which the list was filled
    std::string shown_;                    // that, or a folder below it that is gone
    int column_ = modChangesList::balance; // by which the list is sorted, counted from 1
    bool descending_ = true;
};

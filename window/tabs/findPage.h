#pragma once

#include <QLabel>
#include <QScrollArea>
#include <QSettings>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "base/clsSettings.h"
#include "db/workingDatabase.h"
#include "views/findQuery.h"
#include "widgets/listView.h"
#include "widgets/rowIcons.h"
#include "widgets/systemIcons.h"
#include "window/tabs/findBar.h"
#include "window/tabs/openComparison.h"

// The tab Find: the conditions, what was found below the selected folder, and its number and size. A query
// works for some milliseconds at a time; a newer one takes its place. Errors are logged.
class FindPage final : public QWidget {
    Q_OBJECT

public:
    static constexpr std::size_t mostShown = 10'000;

    // Nothing is owned.
    struct Dependencies {
        ImageList& icons;
        const clsSettings& settings;
        const WorkingDatabase& database;
        std::function<std::string()> folderKey; // below which to look; empty for none
        std::function<bool()> isHeld;           // nothing may be read or shown now
        const OpenComparison& comparison;
    };

    explicit FindPage(Dependencies dependencies);
    ~FindPage() override;

    [[nodiscard]] ListView& list() noexcept { return lvwFound_; }
    [[nodiscard]] const ListView& list() const noexcept { return lvwFound_; }

    // Looks again: at once, with the first row selected, or, while a scan runs, from time to time, with what
    // is selected kept.
    void refresh();
    void follow();
    // After rows have changed or gone: at once, with what is selected kept.
    void reread();
    // Empties the list.
    void clear();

    void findOnly(FindBar::Field field, const std::string& value) { bar_.setOnly(field, value); }
    void focusName() { bar_.focusName(); }
    void fetchIcons() { icons_.fetch(); }

    void restore(const QSettings& state);
    void save(QSettings& state) const;

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void layOut();
    void fitBar();
    void wire();
    void start();
    void stop();
    void work();
    void showAnswer();
    void sortBy(int column, bool descending);
    [[nodiscard]] modFind::Order order() const;
    [[nodiscard]] QString answerText() const;

    Dependencies dependencies_;
    QVBoxLayout layout_{this};
    QScrollArea barRoom_;
    FindBar bar_;
    QLabel lblFound_;
    ListView lvwFound_;
    RowIcons icons_;
    QTimer tmrTyped_; // until somebody stops typing
    QTimer tmrFind_;  // runs while a query is being answered
    std::optional<modFind::FindQuery> query_;
    std::string shownKey_;
    std::size_t shownDigest_ = 0;
    int column_ = 3; // by which the list is sorted, counted from 1
    bool descending_ = true;
    bool selectFirst_ = true;
    bool isCut_ = false; // more was found than is shown
    qint64 cost_ = 0;    // of the last answer, in milliseconds
    qint64 ended_ = 0;   // when it was there
};

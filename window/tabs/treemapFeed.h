#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "db/workingDatabase.h"
#include "scan/clsSearch.h"
#include "views/treemapGrowth.h"
#include "views/treemapReader.h"
#include "widgets/treemap.h"

// Reads the treemap of a folder, a little at a time between other events, and gives it to the control. Errors
// are logged.
class TreemapFeed final : public QObject {
    Q_OBJECT

public:
    // Nothing is owned.
    struct Dependencies {
        Treemap& treemap;
        const WorkingDatabase& database;
        const clsSearch& search;
        // False while something else reads the rows and handles events, perhaps in the midst of a statement.
        std::function<bool()> mayRead;
    };

    explicit TreemapFeed(Dependencies dependencies);

    // Begins to read the rows of a folder, which may have changed, from the start. What is shown stays until
    // then.
    void show(const std::string& key);
    // Reads all that is left to be read, at once.
    void finish();
    // Shows nothing.
    void clear();
    // Rows read before are not to be counted with those of the scan.
    void scanBegins();

    [[nodiscard]] bool isReading() const noexcept { return !key_.empty(); }
    // The time that the last complete reading has taken, without the pauses.
    [[nodiscard]] std::chrono::milliseconds cost() const noexcept { return cost_; }

private:
    void stop();
    void readOn(std::chrono::milliseconds time);
    [[nodiscard]] bool readUntil(modTreemap::Time end);
    void hand();

    Dependencies dependencies_;
    QTimer next_;
    std::string key_; // of the folder that is being read; empty for none
    std::optional<TreemapReader> reader_;
    std::optional<TreemapGrowth> growth_; // instead, while a scan fills an empty table
    bool isGrowing_ = false;              // which of them reads
    std::chrono::milliseconds spent_{0};
    std::chrono::milliseconds cost_{0};
};

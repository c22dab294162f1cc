#pragma once

#include <QObject>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "db/earlierScan.h"
#include "views/comparison.h"

// The comparison with a saved scan that is open in the window, if any: what the views read of it.
class OpenComparison final : public QObject {
    Q_OBJECT

public:
    struct Comparison {
        std::unique_ptr<EarlierScan> earlier;
        std::string file; // its internal path
        modChanges::Request request;
        modChanges::Result result;
    };

    [[nodiscard]] bool isOpen() const noexcept { return comparison_.has_value(); }
    // Takes the place of the one that is open; it is up to date then.
    void set(Comparison comparison);
    void close();

    // Whether rows have changed since.
    [[nodiscard]] bool isOutdated() const noexcept { return isOutdated_; }
    void setOutdated();

    // Only while one is open:
    [[nodiscard]] const Comparison& comparison() const { return *comparison_; }
    // To compare again with what was read: another result takes the place of this one, which is removed from
    // table `changes`.
    void replaceResult(modChanges::Request request, modChanges::Result result);
    [[nodiscard]] Database& database() const { return comparison_->earlier->database(); }

    // Whether the folder (a key) is the compared one or lies in it; false if none is open.
    [[nodiscard]] bool covers(std::string_view folder) const;
    // What is known of a folder that is covered: nothing if it is the same in both scans. The size that both
    // have is not told then.
    [[nodiscard]] std::optional<modChanges::Change> itself(std::string_view folder) const;
    // The files and folders directly in it that differ, largest change first.
    [[nodiscard]] std::vector<modChanges::Change> entriesIn(std::string_view folder) const;
    // Its subfolders that differ, and its files as one (modChanges::childrenOf).
    [[nodiscard]] std::vector<modChanges::Change> childrenOf(std::string_view folder) const;

Q_SIGNALS:
    // One was opened or closed, or is out of date.
    void changed();

private:
    std::optional<Comparison> comparison_;
    bool isOutdated_ = false;
};

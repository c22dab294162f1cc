#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "db/scanRecords.h"
#include "db/workingDatabase.h"

class clsUserInterface;

// A saved scan to be compared with the working database. What is compared is copied into a database beside
// the working one, which is deleted with the object. So the rows can be read as those of the working database
// can, and nothing that the file's author wrote but values is used.
class EarlierScan {
public:
    // The file is a path as typed, and not trusted. Its columns that are not compared stay NULL. Throws as
    // loading a saved scan does (copyRows), with the file's displayed path. `goesOn` is asked now and then;
    // after a no, `isComplete` is false, and the object is of no use.
    EarlierScan(WorkingDatabase& working, std::string_view file, clsUserInterface& userInterface,
                const std::function<bool()>& goesOn);

    [[nodiscard]] bool isComplete() const noexcept { return complete_; }
    [[nodiscard]] Database& database() const { return companion_->database(); }
    // Those that its rows come from; none if the file does not tell.
    [[nodiscard]] const std::vector<modScans::Scan>& scans() const noexcept { return scans_; }

private:
    std::unique_ptr<WorkingDatabase::Successor> companion_;
    std::vector<modScans::Scan> scans_;
    bool complete_ = true;
};

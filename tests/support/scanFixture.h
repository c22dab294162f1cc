#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/clsSettings.h"
#include "db/modDatabase.h"
#include "scan/clsSearch.h"
#include "scan/modProcessFiles.h"
#include "support/recordingInterface.h"
#include "support/temporaryFolder.h"

// The program without its window: settings, an empty working database, and a tree to scan.
class ScanFixture {
public:
    ScanFixture();

    // Scans a folder of the tree (the whole tree if the name is empty).
    modProcessFiles::ScanResult scan(std::string_view name = {});

    // The last ones in the status bar.
    [[nodiscard]] std::string remarks() const;

    // The internal path of a folder of the tree, with a trailing "\".
    [[nodiscard]] std::string key(std::string_view name = {}) const;

    // The rows of a query, with the cells of each joined by "|" (NULL as "~").
    [[nodiscard]] std::vector<std::string> rows(std::string_view statement) const;
    // The first cell of the first row.
    [[nodiscard]] std::string cell(std::string_view statement) const;
    // Whether the size of every folder is the sum of what is recorded in it.
    [[nodiscard]] bool areSumsRight() const;

    TemporaryFolder application;
    TemporaryFolder tree;
    RecordingInterface userInterface;
    clsSettings settings;
    WorkingDatabase working;
    clsSearch search;
};

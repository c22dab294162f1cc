#pragma once

#include <string>

#include "base/clsSettings.h"
#include "db/modDatabase.h"
#include "support/recordingInterface.h"
#include "support/temporaryFolder.h"

// A working database in a folder of its own, to be filled with rows that anyone may have made.
class LoadedScan {
public:
    LoadedScan();

    struct Outputs {
        bool exact = false;
        bool withOwner = false;
        bool withWorkbook = true; // which takes most of the time
    };
    // Computes the figures and writes every report to memory, with properties of each that hold for any rows.
    void requireSoundOutputs(const Outputs& outputs);
    // Compares the rows with those of the file that they were loaded from, a path as typed.
    void requireSoundComparison(const std::string& file);

    TemporaryFolder folder;
    RecordingInterface userInterface;
    clsSettings settings;
    WorkingDatabase working;

private:
    void requireSoundFigures() const;
    void requireSoundReports(std::int32_t detail, bool withWorkbook);
    void requireSoundList();
};

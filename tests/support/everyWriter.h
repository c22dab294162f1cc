#pragma once

#include <functional>
#include <string>
#include <vector>

#include "export/listTable.h"
#include "support/scanFixture.h"

// Everything that writes a file chosen by the user, for one small scan. Errors are in
// `userInterface.messages`, beginning with their number.
class EveryWriter : public ScanFixture {
public:
    struct Writer {
        std::string name;
        std::function<void(const std::string& file)> write;
    };

    EveryWriter();
    ~EveryWriter();
    EveryWriter(const EveryWriter&) = delete;
    EveryWriter& operator=(const EveryWriter&) = delete;

    [[nodiscard]] std::vector<Writer> writers();
};

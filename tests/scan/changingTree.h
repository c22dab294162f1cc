#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "platform/paths.h"
#include "support/scanFixture.h"

// Changes a tree while it is scanned, when the walk comes to the folder "last" of a/middle.
class ChangingTree : public testing::Test, protected ScanFixture {
protected:
    ChangingTree() {
        settings.setReaders(0); // so that nothing is read before the change
        tree.write("a/middle/last/file", "x");
        tree.write("outside/middle/last/secret", "x");
    }
    void scanAndDo(const std::function<void()>& change) {
        userInterface.onYield = [&] {
            const auto& [panel, text] = userInterface.statuses.back();
            if (panel == StatusPanel::folder &&
                text.ends_with(std::string("last") + platform::displaySeparator)) {
                userInterface.onYield = {};
                change();
            }
        };
        scan("a");
    }
    // Why that folder could not be read; empty if it could.
    [[nodiscard]] std::string reasonOfLast() const {
        const auto* const last = search.gaps.find(key("a") + "middle\\last\\");
        return last == nullptr ? "" : last->reason;
    }
    [[nodiscard]] std::string secretsFound() const {
        return cell("select count(*) from details where fileName=\"secret\"");
    }
};

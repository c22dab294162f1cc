#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "support/temporaryFolder.h"
#include "support/testSystem.h"

// Runs the real program as a user does.
class Console : public testing::Test {
protected:
    using Outcome = testSystem::Outcome;
    using Variables = std::vector<std::pair<std::string, std::string>>;

    Console() {
        for (const char* file : {"tree/a/one.TXT", "tree/a/two.txt", "tree/b/c/three"}) {
            folder.write(file, std::string(2048, 'x'));
        }
        folder.write("tree/direct.txt", "12345");
    }

    // Arguments are words separated by blanks, '' is an empty one; %T is the tree, %F the folder that
    // contains it.
    [[nodiscard]] std::vector<std::string> words(const std::string& arguments) const {
        std::vector<std::string> result{"--app-folder", folder.typed("app")};
        std::istringstream split(arguments);
        for (std::string word; split >> word;) {
            for (const auto& [mark, path] :
                 {std::pair("%T", folder.typed("tree")), std::pair("%F", folder.typed())}) {
                if (const std::size_t at = word.find(mark); at != std::string::npos) {
                    word.replace(at, 2, path);
                }
            }
            result.push_back(word == "''" ? "" : word);
        }
        return result;
    }

    [[nodiscard]] Outcome run(const std::string& arguments, const Variables& variables = {},
                              const std::string& output = {}) const {
        return testSystem::run("spannory-scan", words(arguments), variables, output);
    }

    static bool holds(const std::string& text, const std::string& part) {
        return text.find(part) != std::string::npos;
    }

    TemporaryFolder folder;
};

#include "tree/history.h"

#include <gtest/gtest.h>

#include <set>

namespace {

// Each letter of the steps is a folder that is shown; "<" and ">" go back and forward, "-x" removes a folder
// from the disk, "=x" corrects the present one.
struct Walk {
    const char* steps;
    const char* reached; // by "<" and ">"; "." for nowhere
    bool hasBack;
    bool hasForward;
};

TEST(History, goesWhereABrowserWould) {
    const Walk walks[] = {
        {"", "", false, false},
        {"<>", "..", false, false},
        {"a<", ".", false, false},
        {"ab<", "a", false, true},
        {"abc<<>", "bab", true, true},
        {"abc<<>>>", "babc.", true, false},
        {"aab<<", "a.", false, true},
        {"abc<b", "b", true, true},    // the present one again cuts nothing
        {"abc<<d", "ba", true, false}, // another one does
        {"abc<<d<", "baa", false, true},
        {"abc-b<>", "ac", true, false},
        {"abc-a-b<", ".", false, false},
        {"abc<<-b>", "bac", true, false},
        {"abc<<-b-c>", "ba.", false, false},
        {"abc<=d<>", "bad", true, true},
        {"=a", "", false, false},
    };
    for (const Walk& walk : walks) {
        SCOPED_TRACE(walk.steps);
        History history;
        std::set<std::string> gone;
        const auto isThere = [&](const std::string& key) { return !gone.contains(key); };
        std::string reached;
        const std::string steps(walk.steps);
        for (std::size_t i = 0; i < steps.size(); ++i) {
            const std::string next = steps.substr(i + 1, 1);
            if (steps[i] == '-') {
                gone.insert(next);
                ++i;
            } else if (steps[i] == '=') {
                history.correct(next);
                ++i;
            } else if (steps[i] == '<' || steps[i] == '>') {
                const std::string key = steps[i] == '<' ? history.back(isThere) : history.forward(isThere);
                reached += key.empty() ? "." : key;
            } else {
                history.visit(steps.substr(i, 1));
            }
        }
        EXPECT_EQ(reached, walk.reached);
        EXPECT_EQ(history.hasBack(), walk.hasBack);
        EXPECT_EQ(history.hasForward(), walk.hasForward);
    }
}

TEST(History, forgetsTheEarliestOfVeryMany) {
    History history;
    for (std::size_t i = 0; i <= History::most; ++i) {
        history.visit(std::to_string(i));
    }
    std::string last;
    while (history.hasBack()) {
        last = history.back([](const std::string&) { return true; });
    }
    EXPECT_EQ(last, "1");
    history.clear();
    EXPECT_FALSE(history.hasBack() || history.hasForward());
}

} // namespace

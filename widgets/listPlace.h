#pragma once

#include <string>
#include <vector>

class ListView;

// What is selected in a list and how far it is scrolled, for when it gets all its rows anew.
class ListPlace {
public:
    explicit ListPlace(const ListView& list);

    // If the list has lost its selection since: selects what was selected and is still there or, if nothing
    // of it is, what stood next to it. The list may have other rows, and all instead of the filtered ones.
    void restore(ListView& list) const;

private:
    void noteNeighbours(const ListView& list, const std::vector<int>& rows, int current);

    std::vector<std::string> selected_;   // keys; the current row's first
    std::vector<std::string> neighbours_; // the nearest first, those below before those above
    int top_;
};

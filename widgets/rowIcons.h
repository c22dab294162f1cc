#pragma once

class ImageList;
class ListView;

// Gives the rows of a list whose keys are paths their icons. Neither is owned.
class RowIcons {
public:
    RowIcons(ListView& list, ImageList& images) : list_(list), images_(images) {}

    // Gives the rows in view their missing icons. Called by a timer: cheap if no icon is missing. If the
    // system is slow to answer, as for a slow network, the next call continues with the following rows.
    void fetch();

private:
    ListView& list_;
    ImageList& images_;
    unsigned next_ = 0; // continues through the rows in view, so that each gets its turn
};

#pragma once

#include <string_view>

class ListView;

// Sorting and looking up rows of report lists.
namespace modLvw {

// Sorts the list by a column, a header's position counted from 1: by the keys that the column's tag asks for,
// in the text order that people expect elsewhere. `order` is 0 for ascending, -1 for the reverse of the
// present one (ascending when the list is sorted by another column), anything else for descending. Rows with
// equal keys stay in the order they had. With `selectFirst` the first row is selected and scrolled to, else
// the selection stays with its row. Errors (35600: no such column) are logged.
void lvsort(ListView& list, int column, int order, bool selectFirst);

// The same as settings remember it. They may hold anything: a column that the list lacks becomes the default.
void sortAsRemembered(ListView& list, int column, int order, int defaultColumn, bool selectFirst);

// The index, from 0, of the first row with that key; -1 when there is none.
[[nodiscard]] int itemIndex(std::string_view key, const ListView& list);

} // namespace modLvw

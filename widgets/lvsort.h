#pragma once

#include <string_view>

class ListView;

// Sorts report lists and looks up their rows.
namespace modLvw {

// Sorts the list by a column (a header's position, counted from 1), using keys of the kind given by the
// column's tag, and texts in alphabetical order. `order` is 0 for ascending, -1 to reverse the current order
// (ascending if the list is sorted by another column), anything else for descending. Rows with equal keys
// keep their order. With `selectFirst`, the first row is selected and scrolled to; otherwise the selection
// stays with its row. Errors (35600: no such column) are logged.
void lvsort(ListView& list, int column, int order, bool selectFirst);

// Sorts by remembered settings, which may hold anything: if the list has no such column, the default is used.
void sortAsRemembered(ListView& list, int column, int order, int defaultColumn, bool selectFirst);

// The index, from 0, of the first row with that key; -1 if there is none.
[[nodiscard]] int itemIndex(std::string_view key, const ListView& list);

} // namespace modLvw

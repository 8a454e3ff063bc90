#pragma once
// The sort of a large list: the same order as `SortRows` (a stable text
// sort on the key cells of the order's columns, the display cell where a
// column has no key; without case, A to Z count as a to z), made fast for
// a million rows. The sort keys of all rows are first copied into one
// block of memory, lowered when the case does not count, and an array of
// row numbers with the first sixteen key bytes of each row is sorted; the
// rows themselves move once, at the end.
#include <vector>

#include "filelist/RowTable.h"

namespace tav {

// As `SortRows`: returns the order used (ColTypes not in the list, negative
// ones and repeats dropped); a list of one row is left as it is.
std::vector<int> SortRowsByKeys(RowTable& table, const SortOrder& order);

}  // namespace tav

#pragma once
// The texts one value gives a grid row: its display cell, through the
// column's display mask, and its hidden key cell, through the key mask. A
// fixed length numeric key grows when a value is longer than its mask; the
// caller keeps the grown mask for the column and rewrites the keys of the
// rows made before (their keys are shorter until then).
#include <string>
#include <string_view>

namespace tav {

// The masks through which the list maker passes file dates and times on
// their way to the cells.
inline constexpr std::string_view kListDateMask = "DD/mm/yyyy";
inline constexpr std::string_view kListTimeMask = "HH:NN.SS";

struct CellTexts {
    std::string display;
    std::string key;      // empty when the column has no key mask
    std::string keyMask;  // the key mask used, grown if `keyGrew`
    bool keyGrew = false;
};

// displayMask empty: the value stands as it is. keyMask empty: no key.
// A mask that cannot be applied leaves the value as it is in that cell.
CellTexts formatCellTexts(std::string_view value, std::string_view displayMask, std::string_view keyMask,
                          bool keyMayGrow);

// A display cell rebuilt from its key cell under a new mask, as a change of
// the window's formats does for every row; nothing is read from disk.
std::string displayFromKey(std::string_view key, std::string_view displayMask);

}  // namespace tav

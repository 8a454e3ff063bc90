#pragma once
// The marks a user puts on the rows of a list: the BLUE selection (rows
// marked for an action, whatever the cursor does), hidden rows (`RowHeight`
// 0; the cells stay), and moving a block of rows. The marks are flags of
// each Row, so a sort or a move carries them with the row.
//
// Row numbers here count the data rows from 0.
#include <cstddef>
#include <cstdint>
#include <string>

#include "core/MessageRequest.h"
#include "filelist/RowTable.h"

namespace tav {

// The bit values of a selection request.
inline constexpr int kSelectAllRows = 1;    // every row
inline constexpr int kSelectShownRows = 2;  // hidden rows are left out

// The window fields of a selection.
struct SelectionCounts {
    std::int64_t dirs = 0;   // `SD`
    std::int64_t files = 0;  // `SF`
    std::int64_t bytes = 0;  // `SB`, only when the size format is reversible

    bool operator==(const SelectionCounts&) const = default;
};

struct SelectOptions {
    // `EN_SELWNGWHENCntRowGT`: more rows than this ask first; 0 or less
    // never asks.
    std::int64_t warnAbove = 0;
    // The Size cells can be read back as bytes (`SizeFormatIsReversible`);
    // otherwise `SB` stays 0.
    bool sizeReversible = true;
};

// The lines of the very large selection warning, with the count.
std::string LargeSelectionWarning(std::int64_t count);

// `SD`, `SF`, `SB` of the BLUE rows: the Type cell "<DIR>" is a directory,
// anything else a file; the bytes come from the Size key cell (the display
// cell when there is no key).
SelectionCounts CountSelection(const RowTable& table, bool sizeReversible);

// `SelectRows(kinds)`: puts the rows the bits ask for into the BLUE
// selection. Nothing happens without data rows or without either bit. A
// count of rows above the warning limit asks through the host first (Yes
// goes on); false when the user said No or nothing was selected. `counts`
// receives the fields of the whole BLUE selection afterwards.
bool SelectRows(RowTable& table, int kinds, const SelectOptions& options, MessageHost* host,
                SelectionCounts& counts);

// `ClearSelection`: no row is BLUE.
void ClearSelection(RowTable& table);

// Rows first..last (inclusive, in either order) go into the BLUE selection
// if `blue`, else out of it. Rows beyond the list are ignored.
void SetBlue(RowTable& table, std::size_t first, std::size_t last, bool blue);
// Each of rows first..last changes its BLUE mark.
void ToggleBlue(RowTable& table, std::size_t first, std::size_t last);
std::size_t CountBlue(const RowTable& table);

// `MoveRows`: the block first..last moves one place up (towards row 0) or
// down, keeping its order; the row it passes goes to the other side. False
// when the block is already at that end or out of range; otherwise the new
// first and last row of the block are written back.
bool MoveRows(RowTable& table, std::size_t& first, std::size_t& last, bool up);

// `HideRows`: rows first..last are hidden. `ShowAllRows`: none is.
// Both return how many rows changed.
std::size_t HideRows(RowTable& table, std::size_t first, std::size_t last);
std::size_t ShowAllRows(RowTable& table);
std::size_t CountHidden(const RowTable& table);

}  // namespace tav

#pragma once
// Cells of file dates and times. The list maker's value of a date column is
// the file time through `DD/mm/yyyy`, of a time column through `HH:NN.SS`,
// and a cell is that text put through the column's mask. Written that way,
// every cell of every row is a date written out, read back and written
// again; here the cell is made straight from the civil time when the mask
// is a plain one, and the long way otherwise, with the same text either way.
#include <memory>
#include <string>
#include <string_view>

#include "filelist/FormatCivil.h"

namespace tav {

// Which part of a file time a column shows: the date (the time of day is
// midnight) or the time of day (on day 0, 30 December 1899).
enum class FileTimePart { Date, Time };

// The value text the list maker puts for the part: `DD/mm/yyyy` or
// `HH:NN.SS`; empty when the time is out of the range of dates.
std::string fileTimeValueText(const CivilDateTime& when, FileTimePart part);

// The part alone, as the value text reads back.
CivilDateTime fileTimePart(const CivilDateTime& when, FileTimePart part);

// The cell of the part under a display or key mask: the same text as the
// value text put through the mask (`displayFromKey`).
std::string fileTimeCell(const CivilDateTime& when, FileTimePart part, std::string_view mask);

// The plain masks: days `d` `dd`, months `m` `mm` `mmm`, years `yy` `yyyy`,
// hours `h` `hh`, minutes `n` `nn` (and `m` `mm` next to an hour or a
// second), seconds `s` `ss`, `AM/PM` in any case, and the separators blank,
// `/`, `-`, `.`, `:` and `,`. True and the text in `out` for such a mask;
// false for any other, and `out` is left as it was.
bool plainDateMaskText(const CivilDateTime& value, std::string_view mask, std::string& out);

struct PlainDateMask;

// A mask read once for all the cells of a column.
class FileTimeCellMask {
public:
    FileTimeCellMask() = default;
    explicit FileTimeCellMask(std::string_view mask);
    // The same text as fileTimeCell(when, part, mask).
    std::string cell(const CivilDateTime& when, FileTimePart part) const;

private:
    std::string mask_;
    std::shared_ptr<const PlainDateMask> plain_;  // null: not a plain mask
};

}  // namespace tav

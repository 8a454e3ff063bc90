#pragma once
// The cells of one row of a list, as its columns want them: each value
// through the column's display mask, and through its key mask where the
// column has a hidden key cell. A numeric key longer than its mask widens
// the mask for the rest of the run; rows made before are fixed up by
// whoever holds them (see ListTotals::keyGrew). Dates, times and numbers are
// written straight from their values, with masks read once for the run.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "content/ContentExtractor.h"
#include "filelist/ColumnLayout.h"
#include "filelist/FormatFileTimeCell.h"
#include "filelist/FormatIntegerCell.h"
#include "filelist/FormatLocalTime.h"

namespace tav {

class RowCellWriter {
public:
    explicit RowCellWriter(const ColumnLayout& layout);

    // A new row with every cell empty.
    void begin();
    // The row's cells; `begin` comes before the next row.
    std::vector<std::string> take() { return std::move(row_); }

    // `PutCell`: the value through the masks; with `clean`, line ends become
    // blanks in a cell without a display mask.
    void PutCell(int colType, std::string_view value, bool clean = false);
    // The date and time columns of one file time, converted once.
    void PutFileTimes(int dateColType, int timeColType, std::int64_t seconds);
    // A whole number (size, row number).
    void PutInteger(int colType, std::int64_t value);
    // The content columns and the user columns of a file. `takeable`: the
    // same cells made by `copyContent`, whose texts may be moved.
    void putContent(const ContentCells& cells, ContentCells* takeable);

    // A reader's copy of its extractor's cells, made on the reader's thread:
    // the cells without masks are cleaned there, so that `putContent` only
    // moves them. Safe to call from any thread.
    void copyContent(const ContentCells& from, ContentCells& to) const;

    const std::vector<std::string>& keyMasks() const { return keyMasks_; }
    const std::vector<bool>& keyGrew() const { return keyGrew_; }

private:
    bool wanted(int colType) const { return layout_.wanted(colType); }
    std::size_t cellPosition(int colType) const {
        return static_cast<std::size_t>(layout_.position[static_cast<std::size_t>(colType)]);
    }
    // A wanted column with neither a key nor a display mask: its cell is the
    // cleaned text as it stands.
    bool takesAsItStands(int colType) const;
    void PutFileTime(int colType, const CivilDateTime& when, FileTimePart part);

    const ColumnLayout& layout_;
    LocalTimeConverter clock_;
    std::vector<std::string> keyMasks_;
    std::vector<bool> keyGrew_;
    // The masks of each grid column (the key mask for a key column).
    std::vector<FileTimeCellMask> timeMasks_;
    std::vector<IntegerCellMask> integerMasks_;
    std::vector<std::string> row_;
};

}  // namespace tav

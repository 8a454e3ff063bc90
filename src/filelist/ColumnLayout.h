#pragma once
// `SetUpListColumns`: from the columns a window asks for, the grid columns
// of a refresh, with their masks and hidden key columns, and the decision
// whether files must be read.
//
// Grid columns: the requested columns in their order; then, hidden, the
// Title when user columns need it, and whichever of FilePath, FileName,
// Type, Size and No. is missing (every grid has these five); then one key
// column for each column whose data type has a key.
#include <cstdint>
#include <string>
#include <vector>

#include "content/SpanColumns.h"
#include "filelist/ColumnTypes.h"
#include "filelist/FormatWindowMasks.h"
#include "filelist/RowSink.h"

namespace tav {

// A user column, defined in `Column Specs`.
struct UserColumn {
    SpanColumnDef def;  // def.colType is its number, 27 and up
    std::string caption;
    std::string format;
    std::string dataType;
};

struct ColumnRequest {
    std::vector<int> colTypes;           // in display order; empty: FileName alone
    std::vector<UserColumn> userColumns; // definitions of the numbers from 27 asked for
    bool searchActive = false;           // without a search, 11, 12, 13 are left out
    std::string startValue = "*";        // anything but `*` means content is read
    std::int64_t firstBytes = 0;         // `.m`
    std::int64_t firstPlainBytes = 0;    // `.o`
};

struct ColumnLayout {
    std::vector<ListColumn> columns;
    std::vector<int> position;   // per ColType: the grid column, -1 if none
    std::vector<int> keyColumn;  // per ColType: its key column, -1 if none
    std::vector<UserColumn> userColumns;  // those in the grid
    int visibleCount = 0;        // grid columns before the hidden ones
    bool readContent = false;    // files must be read
    bool wholeFile = false;      // some column needs the whole file
    std::int64_t bytesNeeded = 0;  // the estimate of bytes needed, when not whole

    bool wanted(int colType) const {
        return colType >= 0 && colType < static_cast<int>(position.size()) && position[static_cast<std::size_t>(colType)] >= 0;
    }
    // ColTypes of the content columns in the grid (for contentColumnsFor).
    std::vector<int> wantedColTypes() const;
};

ColumnLayout SetUpListColumns(const ColumnRequest& request, const ColumnSpecs& specs, const WindowFormats& formats);

// `DefineUserColumn`: the number of a user column among those defined so
// far in this run. One with the same texts, format and data type (case
// counts) is the same column, whatever its name and caption; any other gets
// the next number from 27.
int DefineUserColumn(std::vector<UserColumn>& defined, UserColumn column);

// A user column definition: `name;[textfrom];[textto];[infilewithtitle];;format;data type;caption`,
// each free text field in `[ ]`. False when fewer than four separators are present.
bool parseUserColumn(const std::string& definition, UserColumn& out, std::string* name = nullptr);

}  // namespace tav

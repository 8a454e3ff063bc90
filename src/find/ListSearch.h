#pragma once
// Find Next File over the current list (search modes 1 and 2): the listed
// files searched one at a time, in row order, from a position, until the
// first accepted hit. The grid rows come as a RowTable; hidden rows (height
// 0) and directory rows are passed over, and in mode 2 so are rows whose name
// does not match the window's name pattern. Each file also goes through the
// name, size and date test of the file find record, on what the file system
// says of it now. A file that cannot be read counts as not found.
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "filelist/RowTable.h"
#include "find/FileFindRecord.h"
#include "find/FileSearch.h"
#include "find/FindCriteria.h"
#include "find/RejectedList.h"

namespace tav {

// `LastFound`: the value and the byte of the hit shown last, joined by "|";
// empty when none.
struct LastFound {
    std::string value;
    int64_t byteNumber = 0;
    bool empty() const { return value.empty() && byteNumber == 0; }
    bool operator==(const LastFound&) const = default;
};
std::string buildLastFound(const LastFound& found);
LastFound parseLastFound(std::string_view text);

struct ListSearchRequest {
    FindCriteria criteria;
    FileFindRecord record;          // mode 1 or 2, sizes, dates, maximum bytes
    std::string namePattern;        // mode 2: the window's `.b`; empty: the record's pattern
    int64_t today = 0;              // the day number Today compares with
    size_t currentRow = 0;          // the grid's row, 0 the first data row
    std::optional<size_t> lastShownRow;  // the row of the file last shown
    int64_t contextBytes = kFoundTextContextBytes;  // found text either side of the hit
    std::function<bool(size_t row)> rowHidden;      // hidden beside the rows' own mark (optional)
    std::function<bool()> stopRequested;
    RejectedList* rejected = nullptr;  // hits rejected by the criteria, under their file
    static constexpr int64_t kFoundTextContextBytes = 100;
};

struct ListSearchRow {
    size_t row = 0;
    std::string path;
    bool operator==(const ListSearchRow&) const = default;
};

// The first row to search: the current one, unless it is the row of the
// file last shown; then the next.
size_t firstRowToSearch(size_t currentRow, std::optional<size_t> lastShownRow);

// The rows a search takes, from `first` to the last, with their paths.
std::vector<ListSearchRow> rowsToSearch(const RowTable& table, const ListSearchRequest& request, size_t first);

struct ListSearchResult {
    bool refused = false;       // no text to find: a current list is searched by text only
    bool found = false;
    size_t row = 0;             // the row of the file with the hit
    std::string path;
    FoundHit hit;               // value, byte number, found text and its range
    bool stopped = false;       // a stop came (`!`)
    bool startedAtTop = false;  // the search began at the first row: no offer to start again
    size_t filesSearched = 0;
    LastFound lastFound;        // set on a find
};

// `FindNextFile` over the current list: the next file, from the request's
// position, that passes the tests and holds an accepted hit.
ListSearchResult findNextListedFile(const RowTable& table, const ListSearchRequest& request);

// The caption of the run: "Find File in Current List (...) Containing >>...<<".
std::string listSearchCaption(const FindCriteria& criteria, FindSearchMode mode);
// The status line of a find: "Found in File: name // value // Byte: n".
std::string foundStatusText(const std::string& fileName, const LastFound& found);
// The status line of a stopped search.
std::string stoppedStatusText(std::string_view fileSearchStatement);

}  // namespace tav

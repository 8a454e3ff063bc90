#pragma once
// Where a list job sends its rows: the grid model, the command line printer
// and the test collector each take them this way. Rows arrive complete, in
// walk order, on the job's thread.
#include <cstdint>
#include <string>
#include <vector>

namespace tav {

// One grid column of a list: a visible (or user-hidden) column of a ColType,
// or the hidden key column behind one.
struct ListColumn {
    int colType = 1;
    std::string caption;
    bool hidden = false;     // present but not shown (width 0 or less)
    bool isKey = false;      // the hidden key column of `colType`
    std::string mask;        // display mask, or key mask for a key column
    bool keyMayGrow = false; // a fixed length numeric key
};

struct Row {
    std::vector<std::string> cells;  // one per grid column
    bool isDirectory = false;
    std::string path;                // the item's full path
    // Marks of the grid, kept with the row so that sorts and moves carry
    // them: in the BLUE selection; hidden (`RowHeight` 0, cells kept).
    bool blue = false;
    bool hidden = false;
};

struct ListTotals {
    std::int64_t filesListed = 0;
    std::int64_t filesExamined = 0;
    std::int64_t bytesListed = 0;
    bool complete = true;             // false: stopped, or a walk was cut short
    // What was listed: the caption ("Incomplete " in front when a walk was
    // cut short), every entry (" (incomplete)" after one that was cut),
    // those with a wild card in their type and those that name files.
    std::string caption;
    std::vector<std::string> entries, wildEntries, namedEntries;
    // The run's message for the status line; empty when all went well.
    std::string message;
    // The key masks per grid column as they stand at the end; a numeric key
    // may have grown during the run, and rows made before have shorter keys.
    std::vector<std::string> keyMasks;
    std::vector<bool> keyGrew;
};

class RowSink {
public:
    virtual ~RowSink() = default;
    virtual void begin(const std::vector<ListColumn>& columns) = 0;
    // False stops the job cleanly.
    virtual bool row(Row&& row) = 0;
    // A line for the window's error list.
    virtual void fileError(const std::string& path, const std::string& text) = 0;
    virtual void finish(const ListTotals& totals) = 0;
};

}  // namespace tav

#pragma once
// The rows of one list held in memory, as the grid holds them: a sink that
// collects them, the fix-up of keys that grew during the run, the sort on
// key cells and the renumbering of the No. column.
#include <cstdint>
#include <string>
#include <vector>

#include "filelist/ColumnLayout.h"
#include "filelist/RowSink.h"

namespace tav {

struct FileErrorLine {
    std::string path;
    std::string text;
};

class RowTable : public RowSink {
public:
    void begin(const std::vector<ListColumn>& columns) override;
    bool row(Row&& row) override;
    void fileError(const std::string& path, const std::string& text) override;
    // Rewrites the keys of columns whose mask grew (`RewriteWidenedKeys`).
    void finish(const ListTotals& totals) override;

    // Stops the job after this many rows (0: no limit).
    void setRowLimit(std::size_t limit) { limit_ = limit; }
    // `DirsToTop`: directory rows go in front of all file rows, in the
    // order they came; otherwise every row is appended.
    void setDirsToTop(bool on) { dirsToTop_ = on; }

    const std::vector<ListColumn>& columns() const { return columns_; }
    std::vector<Row>& rows() { return rows_; }
    const std::vector<Row>& rows() const { return rows_; }
    const std::vector<FileErrorLine>& errors() const { return errors_; }
    const ListTotals& totals() const { return totals_; }
    bool finished() const { return finished_; }

    // The grid column of a ColType's display cell, or of its key; -1 if none.
    int columnOf(int colType) const;
    int keyColumnOf(int colType) const;

    // `RewriteWidenedKeys`: every key cell of a grown column through its
    // grown mask.
    void RewriteWidenedKeys();
    // A key column's mask grown after the run: every row's key rewritten.
    void growKeyMask(std::size_t column, const std::string& mask);

private:
    std::vector<ListColumn> columns_;
    std::vector<Row> rows_;
    std::vector<FileErrorLine> errors_;
    ListTotals totals_;
    std::size_t limit_ = 0;
    bool dirsToTop_ = false;
    std::size_t dirsAtTop_ = 0;  // directory rows inserted at the top so far
    bool finished_ = false;
};

struct SortOrder {
    std::vector<int> colTypes;  // in sequence; the first decides first
    bool ascending = true;
    bool caseSensitive = false;
};

// The grid columns a sort compares, in order: each ColType's key column, or
// its display column when it has none. ColTypes not in the list, negative
// ones and repeats are dropped; `used` receives the ColTypes kept.
std::vector<std::size_t> SortColumnsOf(const RowTable& table, const SortOrder& order, std::vector<int>& used);

// Sorts the data rows by the key cells of the order's columns (the display
// cell where a column has no key): a text sort, stable. ColTypes not in the
// list, negative ones and repeats are dropped. Returns the order used. A
// list of one row is left as it is.
std::vector<int> SortRows(RowTable& table, const SortOrder& order);

// `Renumber`: the No. column from 1 in row order, through its mask and key.
void Renumber(RowTable& table);

}  // namespace tav

#pragma once
// The rows of a list printed as they come, for a list that needs no sort,
// no renumbering and no directories moved to the top: the first lines show
// at once and memory stays small however long the list. Keeps the error
// list and the totals for the end.
#include <cstddef>
#include <vector>

#include "cli/ListRowPrinter.h"
#include "filelist/RowSink.h"
#include "filelist/RowTable.h"

namespace tav::cli {

class ListStreamSink : public RowSink {
public:
    // `limit`: stops the job after this many rows (0: no limit).
    ListStreamSink(ListRowPrinter& printer, std::size_t limit) : printer_(printer), limit_(limit) {}

    void begin(const std::vector<ListColumn>& columns) override;
    bool row(Row&& row) override;
    void fileError(const std::string& path, const std::string& text) override;
    void finish(const ListTotals& totals) override;

    std::size_t rows() const { return rows_; }
    const std::vector<FileErrorLine>& errors() const { return errors_; }
    const ListTotals& totals() const { return totals_; }

private:
    ListRowPrinter& printer_;
    std::size_t limit_;
    std::size_t rows_ = 0;
    std::vector<FileErrorLine> errors_;
    ListTotals totals_;
};

}  // namespace tav::cli

#pragma once
// `SaveGridAsCsv`: the shown columns of a list, with the header captions
// first, written to a CSV file. The file is written beside its target under
// a temporary name and renamed over it at the end, so a stop or a failure
// leaves the former file as it was. Runs as a job: progress "Writing CSV
// file " with the name, in rows, and the stop is tested after every row.
//
// The table must not change while the job runs; the caller hands it over
// read-only (or gives a copy).
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "filelist/JobContext.h"
#include "filelist/RowTable.h"

namespace tav {

struct CsvOptions {
    char separator = ',';
    // A value holding a double quote: doubled (`""`) inside quotes, or each
    // quote written as `&34#` with the line breaks replaced by blanks.
    bool doubledQuotes = true;
    bool header = true;          // the captions as the first line
    bool skipHiddenRows = false; // leave out rows with `RowHeight` 0
};

struct CsvResult {
    bool ok = false;
    bool stopped = false;       // the user's stop: nothing was replaced
    std::int64_t rows = 0;      // data rows written
    std::string error;          // why it failed
};

// "Writing CSV file " + name + ". Please wait ...."
std::string CsvProgressText(std::string_view path);

// One value as a field of a line.
std::string CsvField(std::string_view value, const CsvOptions& options);

// The grid columns a user sees: neither hidden nor key columns, in order.
std::vector<std::size_t> ShownColumns(const std::vector<ListColumn>& columns);

CsvResult SaveGridAsCsv(const RowTable& table, const std::vector<std::size_t>& columns, const std::string& path,
                        JobContext& job, const CsvOptions& options = {});

}  // namespace tav

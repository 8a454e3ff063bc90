#include "filelist/RowBatcher.h"

namespace tav {

void RowBatcher::begin(const std::vector<ListColumn>& columns) {
    batch_.clear();
    lastFlush_ = now();
    if (to_.begin) to_.begin(columns);
}

bool RowBatcher::row(Row&& row) {
    batch_.push_back(std::move(row));
    if (now() - lastFlush_ < kBatchInterval) return true;
    return flush();
}

bool RowBatcher::flush() {
    lastFlush_ = now();
    if (batch_.empty()) return true;
    std::vector<Row> out;
    out.swap(batch_);
    return to_.rows ? to_.rows(std::move(out)) : true;
}

void RowBatcher::fileError(const std::string& path, const std::string& text) {
    if (to_.fileError) to_.fileError(path, text);
}

void RowBatcher::finish(const ListTotals& totals) {
    flush();
    if (to_.finish) to_.finish(totals);
}

}  // namespace tav

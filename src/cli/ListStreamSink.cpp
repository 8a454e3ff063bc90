#include "cli/ListStreamSink.h"

namespace tav::cli {

void ListStreamSink::begin(const std::vector<ListColumn>& columns) {
    rows_ = 0;
    errors_.clear();
    totals_ = ListTotals{};
    printer_.begin(columns);
}

bool ListStreamSink::row(Row&& row) {
    printer_.row(row);
    ++rows_;
    return limit_ == 0 || rows_ < limit_;
}

void ListStreamSink::fileError(const std::string& path, const std::string& text) { errors_.push_back({path, text}); }

void ListStreamSink::finish(const ListTotals& totals) {
    totals_ = totals;
    printer_.flush();
}

}  // namespace tav::cli

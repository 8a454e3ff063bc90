#pragma once
// How `tavelo list` and `tavelo find` write a list: a header line of the
// shown columns' captions, then one line a row, the fields separated by
// tabs, or as CSV with every field in double quotes. Cells are written as
// UTF-8 (names that are not are read as Windows-1252). A tab-separated
// field has no tabs or line ends of its own; a CSV field keeps them, inside
// its quotes, with each quote doubled. Lines gather in a buffer that goes
// out in large blocks.
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "filelist/RowSink.h"

namespace tav::cli {

enum class ListStyle { Tabs, Csv };

class ListRowPrinter {
public:
    ListRowPrinter(std::ostream& out, ListStyle style) : out_(out), style_(style) {}
    ~ListRowPrinter() { flush(); }
    ListRowPrinter(const ListRowPrinter&) = delete;
    ListRowPrinter& operator=(const ListRowPrinter&) = delete;

    // Picks the shown columns (neither hidden nor keys) and writes the header.
    void begin(const std::vector<ListColumn>& columns);
    void row(const Row& row);
    void flush();

private:
    void field(std::string_view cell);
    void endLine();

    std::ostream& out_;
    ListStyle style_;
    std::vector<std::size_t> shown_;
    std::string buffer_;
};

}  // namespace tav::cli

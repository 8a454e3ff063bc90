#include "cli/ListRowPrinter.h"

#include <ostream>

#include "core/Utf8.h"
#include "filelist/GridCsv.h"

namespace tav::cli {

namespace {

constexpr std::size_t kBlock = 1 << 16;

// True when a byte of the text is above 127. Written as a plain loop so
// that the compiler can take many bytes at a time.
bool hasHighBytes(std::string_view text) {
    unsigned char high = 0;
    for (const char c : text) high |= static_cast<unsigned char>(c);
    return high >= 0x80;
}

// Tabs and line ends become blanks, in place.
void blankSeparators(char* p, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        const char c = p[i];
        p[i] = (c == '\t' || c == '\n' || c == '\r') ? ' ' : c;
    }
}

}  // namespace

void ListRowPrinter::begin(const std::vector<ListColumn>& columns) {
    shown_ = ShownColumns(columns);
    for (std::size_t i = 0; i < shown_.size(); ++i) {
        if (i) buffer_ += style_ == ListStyle::Csv ? ',' : '\t';
        field(columns[shown_[i]].caption);
    }
    endLine();
}

void ListRowPrinter::row(const Row& row) {
    static const std::string kNone;
    for (std::size_t i = 0; i < shown_.size(); ++i) {
        if (i) buffer_ += style_ == ListStyle::Csv ? ',' : '\t';
        field(shown_[i] < row.cells.size() ? row.cells[shown_[i]] : kNone);
    }
    endLine();
}

void ListRowPrinter::field(std::string_view cell) {
    std::string converted;
    if (hasHighBytes(cell) && !isValidUtf8(cell)) {
        converted = cp1252ToUtf8(cell);
        cell = converted;
    }
    if (style_ == ListStyle::Csv) {
        buffer_ += '"';
        for (std::size_t quote; (quote = cell.find('"')) != std::string_view::npos;) {
            buffer_.append(cell.substr(0, quote + 1));
            buffer_ += '"';
            cell.remove_prefix(quote + 1);
        }
        buffer_.append(cell);
        buffer_ += '"';
        return;
    }
    const std::size_t at = buffer_.size();
    buffer_.append(cell);
    blankSeparators(buffer_.data() + at, cell.size());
}

void ListRowPrinter::endLine() {
    buffer_ += '\n';
    if (buffer_.size() >= kBlock) flush();
}

void ListRowPrinter::flush() {
    if (buffer_.empty()) return;
    out_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    buffer_.clear();
}

}  // namespace tav::cli

#include "cli/ListRowPrinter.h"

#include <ostream>

#include "core/Utf8.h"
#include "filelist/GridCsv.h"

namespace tav::cli {

namespace {

constexpr std::size_t kBlock = 1 << 16;

// True when the text has no tabs, line ends or quotes and is UTF-8: it
// goes out as it stands in either style.
bool plain(std::string_view text) {
    // No early way out: the loop runs over many bytes at a time.
    unsigned char high = 0;
    bool special = false;
    for (const char c : text) {
        high |= static_cast<unsigned char>(c);
        special |= (c == '\t') | (c == '\n') | (c == '\r') | (c == '"');
    }
    if (special) return false;
    return high < 0x80 || isValidUtf8(text);
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
    const bool csv = style_ == ListStyle::Csv;
    if (csv) buffer_ += '"';
    if (plain(cell)) {
        buffer_.append(cell);
    } else {
        const std::string text = isValidUtf8(cell) ? std::string(cell) : toUtf8(cell);
        for (const char c : text) {
            if (!csv && (c == '\t' || c == '\n' || c == '\r'))
                buffer_ += ' ';
            else if (csv && c == '"')
                buffer_ += "\"\"";
            else
                buffer_ += c;
        }
    }
    if (csv) buffer_ += '"';
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

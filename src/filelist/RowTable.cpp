#include "filelist/RowTable.h"

#include <algorithm>

#include "filelist/ColumnTypes.h"
#include "filelist/FormatCellPut.h"
#include "filelist/FormatValueText.h"

namespace tav {

void RowTable::begin(const std::vector<ListColumn>& columns) {
    columns_ = columns;
    rows_.clear();
    errors_.clear();
    totals_ = ListTotals{};
    finished_ = false;
    dirsAtTop_ = 0;
}

bool RowTable::row(Row&& row) {
    if (dirsToTop_ && row.isDirectory)
        rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(dirsAtTop_++), std::move(row));
    else
        rows_.push_back(std::move(row));
    return limit_ == 0 || rows_.size() < limit_;
}

void RowTable::fileError(const std::string& path, const std::string& text) { errors_.push_back({path, text}); }

void RowTable::finish(const ListTotals& totals) {
    totals_ = totals;
    finished_ = true;
    RewriteWidenedKeys();
}

int RowTable::columnOf(int colType) const {
    for (std::size_t i = 0; i < columns_.size(); ++i)
        if (columns_[i].colType == colType && !columns_[i].isKey) return static_cast<int>(i);
    return -1;
}

int RowTable::keyColumnOf(int colType) const {
    for (std::size_t i = 0; i < columns_.size(); ++i)
        if (columns_[i].colType == colType && columns_[i].isKey) return static_cast<int>(i);
    return -1;
}

void RowTable::RewriteWidenedKeys() {
    for (std::size_t c = 0; c < columns_.size() && c < totals_.keyGrew.size(); ++c) {
        if (!totals_.keyGrew[c]) continue;
        const std::string& mask = totals_.keyMasks[c];
        columns_[c].mask = mask;
        for (Row& r : rows_) {
            if (c >= r.cells.size() || r.cells[c].empty() || r.cells[c].size() >= mask.size()) continue;
            FormatResult f = formatValueText(r.cells[c], mask);
            if (f.ok()) r.cells[c] = std::move(f.text);
        }
        totals_.keyGrew[c] = false;
    }
}

void RowTable::growKeyMask(std::size_t column, const std::string& mask) {
    totals_.keyMasks.resize(columns_.size());
    totals_.keyGrew.resize(columns_.size());
    totals_.keyMasks[column] = mask;
    totals_.keyGrew[column] = true;
    RewriteWidenedKeys();
}

namespace {

int compareNoCase(const std::string& a, const std::string& b) {
    const std::size_t n = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < n; ++i) {
        unsigned char x = static_cast<unsigned char>(a[i]), y = static_cast<unsigned char>(b[i]);
        if (x >= 'A' && x <= 'Z') x = static_cast<unsigned char>(x - 'A' + 'a');
        if (y >= 'A' && y <= 'Z') y = static_cast<unsigned char>(y - 'A' + 'a');
        if (x != y) return x < y ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

}  // namespace

std::vector<std::size_t> SortColumnsOf(const RowTable& table, const SortOrder& order, std::vector<int>& used) {
    used.clear();
    std::vector<std::size_t> sortColumns;
    for (int t : order.colTypes) {
        if (t < 0 || std::find(used.begin(), used.end(), t) != used.end()) continue;
        int c = table.keyColumnOf(t);
        if (c < 0) c = table.columnOf(t);
        if (c < 0) continue;
        used.push_back(t);
        sortColumns.push_back(static_cast<std::size_t>(c));
    }
    return sortColumns;
}

std::vector<int> SortRows(RowTable& table, const SortOrder& order) {
    std::vector<int> used;
    const std::vector<std::size_t> sortColumns = SortColumnsOf(table, order, used);
    std::vector<Row>& rows = table.rows();
    if (rows.size() < 2 || sortColumns.empty()) return used;
    static const std::string kEmpty;
    auto cell = [](const Row& r, std::size_t c) -> const std::string& { return c < r.cells.size() ? r.cells[c] : kEmpty; };
    std::stable_sort(rows.begin(), rows.end(), [&](const Row& a, const Row& b) {
        for (std::size_t c : sortColumns) {
            const std::string& x = cell(a, c);
            const std::string& y = cell(b, c);
            const int d = order.caseSensitive ? x.compare(y) : compareNoCase(x, y);
            if (d != 0) return order.ascending ? d < 0 : d > 0;
        }
        return false;
    });
    return used;
}

void Renumber(RowTable& table) {
    const int display = table.columnOf(col::Number);
    if (display < 0) return;
    const int key = table.keyColumnOf(col::Number);
    const std::vector<ListColumn>& columns = table.columns();
    const std::string& mask = columns[static_cast<std::size_t>(display)].mask;
    std::string keyMask = key >= 0 ? columns[static_cast<std::size_t>(key)].mask : std::string();
    const bool mayGrow = key >= 0 && columns[static_cast<std::size_t>(key)].keyMayGrow;
    std::int64_t n = 0;
    for (Row& r : table.rows()) {
        r.cells.resize(columns.size());
        CellTexts texts = formatCellTexts(std::to_string(++n), mask.empty() ? std::string_view("0") : mask,
                                          keyMask, mayGrow);
        r.cells[static_cast<std::size_t>(display)] = std::move(texts.display);
        if (key >= 0) {
            r.cells[static_cast<std::size_t>(key)] = std::move(texts.key);
            keyMask = texts.keyMask;
        }
    }
    if (key >= 0 && keyMask != columns[static_cast<std::size_t>(key)].mask) {
        // Grown on the way: the rows before the growth get the long key too.
        table.growKeyMask(static_cast<std::size_t>(key), keyMask);
    }
}

}  // namespace tav

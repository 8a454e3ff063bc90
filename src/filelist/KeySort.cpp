#include "filelist/KeySort.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

namespace tav {

namespace {

// The first sixteen bytes of a row's keys, big-endian, zero padded: the
// keys joined with a zero byte between them when no key holds one (a
// shorter key then still orders first), else the first key alone.
struct SortItem {
    std::uint64_t high;
    std::uint64_t low;
    std::uint32_t row;
};

bool samePrefix(const SortItem& x, const SortItem& y) { return x.high == y.high && x.low == y.low; }
bool prefixBefore(const SortItem& x, const SortItem& y) { return x.high != y.high ? x.high < y.high : x.low < y.low; }

}  // namespace

std::vector<int> SortRowsByKeys(RowTable& table, const SortOrder& order) {
    std::vector<int> used;
    const std::vector<std::size_t> sortColumns = SortColumnsOf(table, order, used);
    std::vector<Row>& rows = table.rows();
    const std::size_t n = rows.size();
    const std::size_t k = sortColumns.size();
    if (n < 2 || k == 0) return used;

    // The keys, row after row, column after column: key c of row i runs
    // from starts[i*k+c] to starts[i*k+c+1].
    std::vector<std::size_t> starts(n * k + 1);
    std::size_t total = 0;
    for (const Row& r : rows)
        for (std::size_t c : sortColumns)
            if (c < r.cells.size()) total += r.cells[c].size();
    std::string arena;
    arena.reserve(total);
    bool zeroInKeys = false;
    for (std::size_t i = 0; i < n; ++i) {
        const Row& r = rows[i];
        for (std::size_t j = 0; j < k; ++j) {
            starts[i * k + j] = arena.size();
            const std::size_t c = sortColumns[j];
            if (c >= r.cells.size()) continue;
            arena += r.cells[c];
            if (!zeroInKeys && r.cells[c].find('\0') != std::string::npos) zeroInKeys = true;
        }
    }
    starts[n * k] = arena.size();
    if (!order.caseSensitive)
        for (char& ch : arena)
            if (ch >= 'A' && ch <= 'Z') ch = static_cast<char>(ch - 'A' + 'a');

    std::vector<SortItem> items(n);
    for (std::size_t i = 0; i < n; ++i) {
        unsigned char bytes[16] = {};
        std::size_t filled = 0;
        const std::size_t lastKey = zeroInKeys ? 1 : k;
        for (std::size_t j = 0; j < lastKey && filled < 16; ++j) {
            if (j > 0) ++filled;  // the zero byte between keys
            const std::size_t from = starts[i * k + j], to = starts[i * k + j + 1];
            for (std::size_t b = from; b < to && filled < 16; ++b) bytes[filled++] = static_cast<unsigned char>(arena[b]);
        }
        std::uint64_t high = 0, low = 0;
        for (int b = 0; b < 8; ++b) high = (high << 8) | bytes[b];
        for (int b = 8; b < 16; ++b) low = (low << 8) | bytes[b];
        items[i] = {high, low, static_cast<std::uint32_t>(i)};
    }
    const char* data = arena.data();
    auto compare = [&](std::uint32_t a, std::uint32_t b) -> int {
        for (std::size_t j = 0; j < k; ++j) {
            const std::size_t fa = starts[a * k + j], la = starts[a * k + j + 1] - fa;
            const std::size_t fb = starts[b * k + j], lb = starts[b * k + j + 1] - fb;
            const int d = std::memcmp(data + fa, data + fb, std::min(la, lb));
            if (d != 0) return d;
            if (la != lb) return la < lb ? -1 : 1;
        }
        return 0;
    };
    // A shorter key padded with zeros orders before a longer one that
    // goes on with other bytes, as the text compare does; equal prefixes
    // leave it to the whole keys.
    const bool ascending = order.ascending;
    std::stable_sort(items.begin(), items.end(), [&](const SortItem& x, const SortItem& y) {
        if (!samePrefix(x, y)) return ascending ? prefixBefore(x, y) : prefixBefore(y, x);
        const int d = compare(x.row, y.row);
        return ascending ? d < 0 : d > 0;
    });

    std::vector<Row> sorted;
    sorted.reserve(n);
    for (const SortItem& item : items) sorted.push_back(std::move(rows[item.row]));
    rows.swap(sorted);
    return used;
}

}  // namespace tav

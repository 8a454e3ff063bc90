#include "filelist/GridMarks.h"

#include <algorithm>

#include "filelist/ColumnTypes.h"
#include "filelist/FormatReadNumber.h"

namespace tav {

namespace {

constexpr std::string_view kDirType = "<DIR>";

const std::string& cellAt(const Row& r, int column) {
    static const std::string kEmpty;
    return column >= 0 && static_cast<std::size_t>(column) < r.cells.size() ? r.cells[static_cast<std::size_t>(column)]
                                                                            : kEmpty;
}

// The rows of a range that exist, in ascending order; false when none does.
bool clampRange(const RowTable& table, std::size_t& first, std::size_t& last) {
    if (first > last) std::swap(first, last);
    const std::size_t n = table.rows().size();
    if (n == 0 || first >= n) return false;
    last = std::min(last, n - 1);
    return true;
}

}  // namespace

std::string LargeSelectionWarning(std::int64_t count) {
    return "You have selected a very large number of files.\rFiles Selected: " + std::to_string(count) +
           "\rThis will take some time to process. Do you wish to continue?\rPress Yes to continue.\r"
           "Press No to cancel selection.";
}

SelectionCounts CountSelection(const RowTable& table, bool sizeReversible) {
    SelectionCounts counts;
    const int typeColumn = table.columnOf(col::Type);
    int sizeColumn = table.keyColumnOf(col::Size);
    if (sizeColumn < 0) sizeColumn = table.columnOf(col::Size);
    for (const Row& r : table.rows()) {
        if (!r.blue) continue;
        if (cellAt(r, typeColumn) == kDirType) {
            ++counts.dirs;
            continue;
        }
        ++counts.files;
        if (!sizeReversible) continue;
        const std::string& size = cellAt(r, sizeColumn);
        if (!size.empty()) counts.bytes += static_cast<std::int64_t>(ReadNumber(size));
    }
    return counts;
}

bool SelectRows(RowTable& table, int kinds, const SelectOptions& options, MessageHost* host,
                SelectionCounts& counts) {
    std::vector<Row>& rows = table.rows();
    const bool leaveOutHidden = (kinds & kSelectShownRows) != 0;
    if (rows.empty() || (kinds & (kSelectAllRows | kSelectShownRows)) == 0) {
        counts = CountSelection(table, options.sizeReversible);
        return false;
    }
    std::int64_t wanted = 0;
    for (const Row& r : rows)
        if (!(leaveOutHidden && r.hidden)) ++wanted;
    if (options.warnAbove > 0 && wanted > options.warnAbove && host) {
        MessageRequest request = makeRequest(LargeSelectionWarning(wanted), "4");
        if (host->show(request) != 1) {
            counts = CountSelection(table, options.sizeReversible);
            return false;
        }
    }
    for (Row& r : rows)
        if (!(leaveOutHidden && r.hidden)) r.blue = true;
    counts = CountSelection(table, options.sizeReversible);
    return wanted > 0;
}

void ClearSelection(RowTable& table) {
    for (Row& r : table.rows()) r.blue = false;
}

void SetBlue(RowTable& table, std::size_t first, std::size_t last, bool blue) {
    if (!clampRange(table, first, last)) return;
    for (std::size_t i = first; i <= last; ++i) table.rows()[i].blue = blue;
}

void ToggleBlue(RowTable& table, std::size_t first, std::size_t last) {
    if (!clampRange(table, first, last)) return;
    for (std::size_t i = first; i <= last; ++i) table.rows()[i].blue = !table.rows()[i].blue;
}

std::size_t CountBlue(const RowTable& table) {
    return static_cast<std::size_t>(
        std::count_if(table.rows().begin(), table.rows().end(), [](const Row& r) { return r.blue; }));
}

bool MoveRows(RowTable& table, std::size_t& first, std::size_t& last, bool up) {
    std::size_t a = first, b = last;
    if (!clampRange(table, a, b)) return false;
    std::vector<Row>& rows = table.rows();
    const auto begin = rows.begin() + static_cast<std::ptrdiff_t>(a);
    const auto end = rows.begin() + static_cast<std::ptrdiff_t>(b) + 1;
    if (up) {
        if (a == 0) return false;
        std::rotate(begin - 1, begin, end);
        --a;
        --b;
    } else {
        if (b + 1 >= rows.size()) return false;
        std::rotate(begin, end, end + 1);
        ++a;
        ++b;
    }
    first = a;
    last = b;
    return true;
}

std::size_t HideRows(RowTable& table, std::size_t first, std::size_t last) {
    if (!clampRange(table, first, last)) return 0;
    std::size_t changed = 0;
    for (std::size_t i = first; i <= last; ++i) {
        Row& r = table.rows()[i];
        if (!r.hidden) ++changed;
        r.hidden = true;
    }
    return changed;
}

std::size_t ShowAllRows(RowTable& table) {
    std::size_t changed = 0;
    for (Row& r : table.rows()) {
        if (r.hidden) ++changed;
        r.hidden = false;
    }
    return changed;
}

std::size_t CountHidden(const RowTable& table) {
    return static_cast<std::size_t>(
        std::count_if(table.rows().begin(), table.rows().end(), [](const Row& r) { return r.hidden; }));
}

}  // namespace tav

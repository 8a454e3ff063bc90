#include "filelist/RowCellWriter.h"

#include "filelist/CleanCell.h"
#include "filelist/ColumnTypes.h"
#include "filelist/FormatCellPut.h"

namespace tav {

namespace {

constexpr int kContentColTypes[] = {col::FirstBytes, col::Title,    col::FirstPlain, col::LastPlain, col::LastBytes,
                                    col::MetaTags,   col::HtmlTags, col::Mail,       col::Www};

}  // namespace

RowCellWriter::RowCellWriter(const ColumnLayout& layout) : layout_(layout) {
    for (const ListColumn& c : layout_.columns) {
        keyMasks_.push_back(c.isKey ? c.mask : std::string());
        keyGrew_.push_back(false);
        timeMasks_.emplace_back(c.mask);
        integerMasks_.emplace_back(c.mask);
    }
}

void RowCellWriter::begin() { row_.assign(layout_.columns.size(), std::string()); }

bool RowCellWriter::takesAsItStands(int colType) const {
    return wanted(colType) && layout_.keyColumn[static_cast<std::size_t>(colType)] < 0 &&
           layout_.columns[cellPosition(colType)].mask.empty();
}

void RowCellWriter::PutCell(int colType, std::string_view value, bool clean) {
    if (!wanted(colType)) return;
    const std::size_t pos = cellPosition(colType);
    const int key = layout_.keyColumn[static_cast<std::size_t>(colType)];
    const std::string& displayMask = layout_.columns[pos].mask;
    if (key >= 0) {
        const std::size_t k = static_cast<std::size_t>(key);
        CellTexts texts = formatCellTexts(value, displayMask, keyMasks_[k], layout_.columns[k].keyMayGrow);
        if (texts.keyGrew) {
            keyMasks_[k] = texts.keyMask;
            keyGrew_[k] = true;
            timeMasks_[k] = FileTimeCellMask(keyMasks_[k]);
            integerMasks_[k] = IntegerCellMask(keyMasks_[k]);
        }
        row_[k] = std::move(texts.key);
        row_[pos] = clean && displayMask.empty() ? cleanCell(texts.display) : std::move(texts.display);
    } else if (!displayMask.empty()) {
        row_[pos] = formatCellTexts(value, displayMask, {}, false).display;
    } else {
        row_[pos] = clean ? cleanCell(value) : std::string(value);
    }
}

// The cells are made straight from the civil time; a key that may grow
// takes the long way, through the value text.
void RowCellWriter::PutFileTimes(int dateColType, int timeColType, std::int64_t seconds) {
    if (!wanted(dateColType) && !wanted(timeColType)) return;
    const CivilDateTime when = clock_.fromPosix(seconds);
    PutFileTime(dateColType, when, FileTimePart::Date);
    PutFileTime(timeColType, when, FileTimePart::Time);
}

void RowCellWriter::PutFileTime(int colType, const CivilDateTime& when, FileTimePart part) {
    if (!wanted(colType)) return;
    const std::size_t pos = cellPosition(colType);
    const int key = layout_.keyColumn[static_cast<std::size_t>(colType)];
    if (key >= 0 && layout_.columns[static_cast<std::size_t>(key)].keyMayGrow) {
        PutCell(colType, fileTimeValueText(when, part));
        return;
    }
    row_[pos] = timeMasks_[pos].cell(when, part);
    if (key >= 0) row_[static_cast<std::size_t>(key)] = timeMasks_[static_cast<std::size_t>(key)].cell(when, part);
}

void RowCellWriter::PutInteger(int colType, std::int64_t value) {
    if (!wanted(colType)) return;
    const std::size_t pos = cellPosition(colType);
    const int key = layout_.keyColumn[static_cast<std::size_t>(colType)];
    if (key >= 0) {
        const std::size_t k = static_cast<std::size_t>(key);
        std::size_t digits = 1;
        for (std::int64_t v = value; v >= 10; v /= 10) ++digits;
        if (value < 0 || (layout_.columns[k].keyMayGrow && digits > keyMasks_[k].size())) {
            PutCell(colType, std::to_string(value));
            return;
        }
        row_[k] = integerMasks_[k].cell(value);
    }
    row_[pos] = integerMasks_[pos].cell(value);
}

void RowCellWriter::putContent(const ContentCells& cells, ContentCells* takeable) {
    for (int t : kContentColTypes) {
        if (!wanted(t)) continue;
        if (takeable && takesAsItStands(t))
            row_[cellPosition(t)] = std::move(*takeable->forColType(t));
        else if (const std::string* text = cells.forColType(t))
            PutCell(t, *text, true);
    }
    for (std::size_t i = 0; i < layout_.userColumns.size() && i < cells.spanCols.size(); ++i) {
        const int t = layout_.userColumns[i].def.colType;
        if (takeable && takesAsItStands(t))
            row_[cellPosition(t)] = std::move(takeable->spanCols[i]);
        else
            PutCell(t, cells.spanCols[i], true);
    }
}

void RowCellWriter::copyContent(const ContentCells& from, ContentCells& to) const {
    auto one = [&](int colType, const std::string& text, std::string& into) {
        if (!wanted(colType)) return;
        into = takesAsItStands(colType) ? cleanCell(text) : text;
    };
    for (int t : kContentColTypes)
        if (const std::string* text = from.forColType(t)) one(t, *text, *to.forColType(t));
    to.spanCols.resize(from.spanCols.size());
    for (std::size_t i = 0; i < from.spanCols.size(); ++i)
        one(i < layout_.userColumns.size() ? layout_.userColumns[i].def.colType : -1, from.spanCols[i],
            to.spanCols[i]);
    to.errors = from.errors;
}

}  // namespace tav

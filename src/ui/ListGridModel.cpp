#include "ui/ListGridModel.h"

#include <algorithm>

#include "core/Utf8.h"
#include "filelist/ColumnTypes.h"
#include "filelist/KeySort.h"
#include "filelist/SortCompose.h"

namespace tav::ui {

ListGridModel::ListGridModel(QObject* parent) : QAbstractTableModel(parent), marks_(ParseSortMarks(kDefaultSortMarks)) {}

void ListGridModel::beginList(const std::vector<ListColumn>& columns) {
    beginResetModel();
    table_.begin(columns);
    dirsAtTop_ = 0;
    hidden_ = 0;
    sortOrder_.clear();
    rebuildVisible();
    endResetModel();
    recount();
    emit hiddenRowsChanged();
}

void ListGridModel::rebuildVisible() {
    visible_.clear();
    align_.clear();
    const std::vector<ListColumn>& columns = table_.columns();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].hidden || columns[i].isKey) continue;
        visible_.push_back(static_cast<int>(i));
        align_.push_back(defaultAlignment(columns[i].colType));
    }
}

void ListGridModel::appendRows(std::vector<Row>&& rows) {
    if (rows.empty()) return;
    std::vector<Row>& all = table_.rows();
    auto firstFile = rows.begin();
    if (dirsToTop_) {
        // Directories first, each group in the order it came.
        firstFile = std::stable_partition(rows.begin(), rows.end(), [](const Row& r) { return r.isDirectory; });
        const auto dirs = static_cast<std::size_t>(firstFile - rows.begin());
        if (dirs > 0) {
            const int at = static_cast<int>(dirsAtTop_);
            beginInsertRows({}, at, at + static_cast<int>(dirs) - 1);
            all.insert(all.begin() + static_cast<std::ptrdiff_t>(dirsAtTop_), std::make_move_iterator(rows.begin()),
                       std::make_move_iterator(firstFile));
            dirsAtTop_ += dirs;
            endInsertRows();
        }
    }
    const auto files = static_cast<int>(rows.end() - firstFile);
    if (files > 0) {
        const int at = static_cast<int>(all.size());
        beginInsertRows({}, at, at + files - 1);
        all.reserve(std::max(all.size() + static_cast<std::size_t>(files), all.capacity()));
        all.insert(all.end(), std::make_move_iterator(firstFile), std::make_move_iterator(rows.end()));
        endInsertRows();
    }
}

void ListGridModel::addFileError(const std::string& path, const std::string& text) { table_.fileError(path, text); }

void ListGridModel::finishList(const ListTotals& totals) {
    // Only key cells change: nothing the view shows.
    table_.finish(totals);
}

int ListGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(table_.rows().size());
}

int ListGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(visible_.size());
}

QVariant ListGridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount() || index.column() >= columnCount()) return {};
    const Row& r = table_.rows()[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole: {
        const auto c = static_cast<std::size_t>(visible_[static_cast<std::size_t>(index.column())]);
        if (c >= r.cells.size()) return QString();
        const std::string& cell = r.cells[c];
        return isValidUtf8(cell) ? QString::fromUtf8(cell.data(), static_cast<qsizetype>(cell.size()))
                                 : QString::fromStdString(toUtf8(cell));
    }
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(align_[static_cast<std::size_t>(index.column())]);
    case Qt::BackgroundRole:
        return r.blue ? QVariant(blueBack_) : QVariant();
    case Qt::ForegroundRole:
        return r.blue ? QVariant(blueText_) : QVariant();
    default:
        return {};
    }
}

std::string ListGridModel::caption(int column) const {
    const ListColumn& c = table_.columns()[static_cast<std::size_t>(visible_[static_cast<std::size_t>(column)])];
    return MarkedCaption(c.caption, c.colType, sortOrder_, marks_);
}

QVariant ListGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) {
        if (role == Qt::DisplayRole) return section + 1;
        return {};
    }
    if (section < 0 || section >= columnCount()) return {};
    if (role == Qt::DisplayRole) return QString::fromStdString(toUtf8(caption(section)));
    if (role == Qt::TextAlignmentRole) return QVariant::fromValue(align_[static_cast<std::size_t>(section)]);
    return {};
}

Qt::ItemFlags ListGridModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

int ListGridModel::gridColumn(int column) const {
    return column >= 0 && column < columnCount() ? visible_[static_cast<std::size_t>(column)] : -1;
}

int ListGridModel::colTypeAt(int column) const {
    const int g = gridColumn(column);
    return g < 0 ? -1 : table_.columns()[static_cast<std::size_t>(g)].colType;
}

int ListGridModel::columnOfColType(int colType) const {
    for (int i = 0; i < columnCount(); ++i)
        if (colTypeAt(i) == colType) return i;
    return -1;
}

bool ListGridModel::swapColumns(int a, int b) {
    if (a == b || a < 0 || b < 0 || a >= columnCount() || b >= columnCount()) return false;
    std::swap(visible_[static_cast<std::size_t>(a)], visible_[static_cast<std::size_t>(b)]);
    std::swap(align_[static_cast<std::size_t>(a)], align_[static_cast<std::size_t>(b)]);
    const int last = rowCount() - 1;
    emit headerDataChanged(Qt::Horizontal, std::min(a, b), std::max(a, b));
    if (last >= 0) {
        emit dataChanged(index(0, a), index(last, a));
        emit dataChanged(index(0, b), index(last, b));
    }
    return true;
}

void ListGridModel::setAlignment(int column, Qt::Alignment alignment) {
    if (column < 0 || column >= columnCount()) return;
    align_[static_cast<std::size_t>(column)] = alignment;
    emit headerDataChanged(Qt::Horizontal, column, column);
    if (rowCount() > 0) emit dataChanged(index(0, column), index(rowCount() - 1, column), {Qt::TextAlignmentRole});
}

Qt::Alignment ListGridModel::alignment(int column) const {
    return column >= 0 && column < columnCount() ? align_[static_cast<std::size_t>(column)] : Qt::Alignment();
}

Qt::Alignment ListGridModel::defaultAlignment(int colType) {
    const bool number = colType == col::Size || colType == col::Number || colType == col::FoundAt;
    return (number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

std::vector<int> ListGridModel::sortBy(const SortOrder& order) {
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    sortOrder_ = SortRowsByKeys(table_, order);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
    if (columnCount() > 0) emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
    if (hidden_ > 0) emit hiddenRowsChanged();
    return sortOrder_;
}

void ListGridModel::clearSortOrder() {
    if (sortOrder_.empty()) return;
    sortOrder_.clear();
    if (columnCount() > 0) emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

void ListGridModel::setSortMarks(std::vector<std::string> marks) {
    marks_ = std::move(marks);
    if (columnCount() > 0) emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

void ListGridModel::renumber() {
    Renumber(table_);
    const int c = columnOfColType(col::Number);
    if (c >= 0 && rowCount() > 0) emit dataChanged(index(0, c), index(rowCount() - 1, c), {Qt::DisplayRole});
}

void ListGridModel::setBlueColors(const QColor& background, const QColor& text) {
    blueBack_ = background;
    blueText_ = text;
    if (rowCount() > 0) marksChanged(0, rowCount() - 1);
}

bool ListGridModel::isBlue(int row) const {
    return row >= 0 && row < rowCount() && table_.rows()[static_cast<std::size_t>(row)].blue;
}

void ListGridModel::marksChanged(int first, int last) {
    if (first > last) std::swap(first, last);
    first = std::max(first, 0);
    last = std::min(last, rowCount() - 1);
    if (first <= last && columnCount() > 0)
        emit dataChanged(index(first, 0), index(last, columnCount() - 1), {Qt::BackgroundRole, Qt::ForegroundRole});
}

void ListGridModel::recount() {
    const SelectionCounts before = counts_;
    counts_ = CountSelection(table_, sizeReversible_);
    if (!(counts_ == before)) emit selectionCountsChanged(counts_.dirs, counts_.files, counts_.bytes);
}

void ListGridModel::setBlue(int first, int last, bool blue) {
    if (first < 0 || last < 0) return;
    SetBlue(table_, static_cast<std::size_t>(first), static_cast<std::size_t>(last), blue);
    marksChanged(first, last);
    recount();
}

void ListGridModel::toggleBlue(int first, int last) {
    if (first < 0 || last < 0) return;
    ToggleBlue(table_, static_cast<std::size_t>(first), static_cast<std::size_t>(last));
    marksChanged(first, last);
    recount();
}

bool ListGridModel::selectRows(int kinds, const SelectOptions& options, MessageHost* host) {
    SelectOptions o = options;
    o.sizeReversible = sizeReversible_;
    SelectionCounts counts;
    const bool done = SelectRows(table_, kinds, o, host, counts);
    if (done) marksChanged(0, rowCount() - 1);
    recount();
    return done;
}

void ListGridModel::clearBlue() {
    ClearSelection(table_);
    if (rowCount() > 0) marksChanged(0, rowCount() - 1);
    recount();
}

int ListGridModel::blueCount() const { return static_cast<int>(CountBlue(table_)); }

void ListGridModel::setSizeReversible(bool on) {
    sizeReversible_ = on;
    recount();
}

bool ListGridModel::moveRows(int& first, int& last, bool up) {
    if (first < 0 || last < 0) return false;
    std::size_t a = static_cast<std::size_t>(first), b = static_cast<std::size_t>(last);
    if (a > b) std::swap(a, b);
    if (b >= table_.rows().size()) return false;
    // The row that is passed goes to the other side of the block.
    const int passed = up ? static_cast<int>(a) - 1 : static_cast<int>(b) + 1;
    if (passed < 0 || passed >= rowCount()) return false;
    const int destination = up ? static_cast<int>(b) + 1 : static_cast<int>(a);
    if (!beginMoveRows({}, passed, passed, {}, destination)) return false;
    MoveRows(table_, a, b, up);
    endMoveRows();
    first = static_cast<int>(a);
    last = static_cast<int>(b);
    clearSortOrder();
    if (hidden_ > 0) emit hiddenRowsChanged();
    return true;
}

bool ListGridModel::isRowHidden(int row) const {
    return row >= 0 && row < rowCount() && table_.rows()[static_cast<std::size_t>(row)].hidden;
}

void ListGridModel::hideRows(int first, int last) {
    if (first < 0 || last < 0) return;
    if (HideRows(table_, static_cast<std::size_t>(first), static_cast<std::size_t>(last)) == 0) return;
    hidden_ = static_cast<int>(CountHidden(table_));
    emit hiddenRowsChanged();
}

void ListGridModel::showAllRows() {
    if (ShowAllRows(table_) == 0) return;
    hidden_ = 0;
    emit hiddenRowsChanged();
}

}  // namespace tav::ui

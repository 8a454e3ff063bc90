#pragma once
// The rows of a File List window as a Qt table model. It holds the list
// (a RowTable and the marks on its rows) and shows its visible columns
// only: hidden and key columns stay in the rows for sorting and totals.
//
// Rows stream in while a refresh runs (beginList, appendRows, finishList,
// all on the UI thread); the view grows with each batch. BLUE rows are
// painted by their background and text colours. The header captions carry
// the marks of their place in the sort order.
//
// Row numbers are data rows from 0; column numbers are visible columns
// from 0, left to right as shown.
#include <QAbstractTableModel>
#include <QColor>
#include <string>
#include <vector>

#include "core/MessageRequest.h"
#include "filelist/GridMarks.h"
#include "filelist/RowTable.h"

namespace tav::ui {

class ListGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit ListGridModel(QObject* parent = nullptr);

    const RowTable& table() const { return table_; }
    // For engine calls that change rows; tell the model with a reset or the
    // matching signal afterwards.
    RowTable& table() { return table_; }

    // --- Streaming a refresh ---------------------------------------------
    // A new list: the rows go, the columns are these.
    void beginList(const std::vector<ListColumn>& columns);
    // Rows in walk order. With `DirsToTop` a directory goes behind the
    // directories already at the top, every other row to the end.
    void appendRows(std::vector<Row>&& rows);
    void addFileError(const std::string& path, const std::string& text);
    // The end of the refresh: totals kept, grown keys rewritten.
    void finishList(const ListTotals& totals);
    void setDirsToTop(bool on) { dirsToTop_ = on; }
    bool dirsToTop() const { return dirsToTop_; }

    // --- Table model -------------------------------------------------------
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    // --- Columns -------------------------------------------------------------
    // The grid column (index into Row::cells) behind a visible column; -1 if none.
    int gridColumn(int column) const;
    int colTypeAt(int column) const;
    // The visible column of a ColType; -1 when it is not shown.
    int columnOfColType(int colType) const;
    // `SwapColumns`: two visible columns change places, with their alignments.
    bool swapColumns(int a, int b);
    void setAlignment(int column, Qt::Alignment alignment);
    Qt::Alignment alignment(int column) const;
    // The default: numbers to the right, all else to the left.
    static Qt::Alignment defaultAlignment(int colType);

    // --- Sort and renumber --------------------------------------------------
    // Sorts the rows on the key cells of the order, in the order `SortRows`
    // gives (by SortRowsByKeys, made for a million rows), and returns the
    // order used; the header shows its marks. A list of one row stays.
    std::vector<int> sortBy(const SortOrder& order);
    const std::vector<int>& sortOrder() const { return sortOrder_; }
    // Forgets the order (the header loses its marks), e.g. after a move.
    void clearSortOrder();
    void setSortMarks(std::vector<std::string> marks);
    // `Renumber`: the No. column from 1 in row order.
    void renumber();

    // --- BLUE selection --------------------------------------------------------
    void setBlueColors(const QColor& background, const QColor& text);
    bool isBlue(int row) const;
    void setBlue(int first, int last, bool blue);
    void toggleBlue(int first, int last);
    // `SelectRows(kinds)` with the warning through the host.
    bool selectRows(int kinds, const SelectOptions& options, MessageHost* host);
    void clearBlue();
    int blueCount() const;
    // `SD`, `SF`, `SB` of the BLUE rows.
    SelectionCounts selectionCounts() const { return counts_; }
    // Whether `SB` can be read from the Size cells (`SizeFormatIsReversible`).
    void setSizeReversible(bool on);

    // --- Rows ----------------------------------------------------------------
    // `MoveRows`: the block moves one place; first and last follow it. A
    // moved list counts as unsorted.
    bool moveRows(int& first, int& last, bool up);
    bool isRowHidden(int row) const;
    void hideRows(int first, int last);
    void showAllRows();
    int hiddenCount() const { return hidden_; }

signals:
    // The BLUE selection changed: `SD`, `SF`, `SB`.
    void selectionCountsChanged(qint64 dirs, qint64 files, qint64 bytes);
    // Rows were hidden or shown, or hidden rows changed places.
    void hiddenRowsChanged();

private:
    void rebuildVisible();
    void marksChanged(int first, int last);
    void recount();
    std::string caption(int column) const;

    RowTable table_;
    std::vector<int> visible_;           // visible column -> grid column
    std::vector<Qt::Alignment> align_;   // per visible column
    std::vector<int> sortOrder_;
    std::vector<std::string> marks_;
    QColor blueBack_{0, 0, 128};
    QColor blueText_{255, 255, 255};
    bool dirsToTop_ = false;
    std::size_t dirsAtTop_ = 0;
    bool sizeReversible_ = true;
    SelectionCounts counts_;
    int hidden_ = 0;
};

}  // namespace tav::ui

#pragma once
// The list grid of a File List window: a table view over a ListGridModel,
// made for lists of a million rows (fixed row heights, nothing sized to
// its contents).
//
// GREEN selection: the view's own current cell and selection rectangle;
// its colour is `Back color Selection`. BLUE selection: rows marked in the
// model, whatever the cursor does.
//
// Keys (each also a slot, for the key table):
//   Space         toggles BLUE on the GREEN rows
//   Ins           the same, then the cursor goes one row down
//   Ctrl+A        all rows that are not hidden go BLUE
//   Ctrl+Shift+A  no row is BLUE
//   Alt+Up/Down   the GREEN rows move one place up or down
//   Alt+Ctrl+S    the current column joins the sort order being composed
//                 (`NS`); so does Alt+Ctrl+click on a cell or a caption
//
// Fixed columns (`FixedCols`) stay at the left and fixed rows (`FixedRows`
// beyond the header) at the top while the rest scrolls: further views over
// the same model and selection lie on top of the left part, the top part
// and their corner, each clipped to its part.
#include <QColor>
#include <QTableView>
#include <vector>

#include "core/MessageRequest.h"
#include "filelist/GridMarks.h"

namespace tav::ui {

class ListGridModel;

class ListGridView : public QTableView {
    Q_OBJECT
public:
    explicit ListGridView(QWidget* parent = nullptr);
    ~ListGridView() override;

    void setGridModel(ListGridModel* model);
    ListGridModel* gridModel() const { return model_; }

    // `Back color Selection`: the colour of the GREEN selection.
    void setSelectionColor(const QColor& color);
    // The host that asks the large selection warning, and its limit.
    void setMessageHost(MessageHost* host) { host_ = host; }
    void setSelectOptions(const SelectOptions& options) { selectOptions_ = options; }

    // The GREEN rows: the rows the selection rectangle spans, or the
    // current row; -1, -1 when there is none.
    std::pair<int, int> greenRows() const;
    // The ColTypes of the columns the GREEN rectangle spans, left to right.
    std::vector<int> greenColTypes() const;
    // Puts the cursor on a cell, with the GREEN selection on it alone.
    void setGreen(int row, int column);

    // `FixCols`: the first `count` columns stay in place (0: none).
    void setFixedColumns(int count);
    int fixedColumns() const { return fixedColumns_; }
    // `FixRows`: the first `count` data rows stay under the header (0: none).
    void setFixedRows(int count);
    int fixedRows() const { return fixedRows_; }

    // `Min Col Width`: no column gets narrower than this (pixels).
    void setMinColumnWidth(int pixels) { minColumnWidth_ = pixels; }
    void setGridColumnWidth(int column, int pixels);
    void setColumnAlignment(int column, Qt::Alignment alignment);
    // `SwapColumns`: two columns change places with their widths.
    bool swapColumns(int a, int b);
    void setRowHeight(int pixels);

    // `NS`, the sort order being composed.
    const std::vector<int>& newSortOrder() const { return newSortOrder_; }
    void clearNewSortOrder() { newSortOrder_.clear(); }

    // The views on top of the fixed columns, the fixed rows and their corner.
    QTableView* fixedPart() const { return frozen_; }
    QTableView* fixedRowsPart() const { return frozenRows_; }
    QTableView* fixedCornerPart() const { return corner_; }

public slots:
    void toggleBlueOnGreen();
    void toggleBlueAndMoveDown();
    void selectAllBlue();
    void clearBlue();
    void moveGreenUp();
    void moveGreenDown();
    void hideGreenRows();
    void showAllRows();
    void addCurrentColumnToNewSortOrder();
    void addColumnToNewSortOrder(int column);
    // Rows hidden in the model hidden here too (after sorts and moves).
    void syncHiddenRows();

signals:
    // A column joined `NS`: "New Sort Order now >>" ... for the status.
    void newSortOrderChanged(const QString& message);
    // The rows moved; the list counts as unsorted.
    void rowsMoved();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    QModelIndex moveCursor(CursorAction cursorAction, Qt::KeyboardModifiers modifiers) override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    void updateGeometries() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setUpFrozen();
    QTableView* makeOverlay();
    void updateFrozenColumns();
    void updateFrozenGeometry();
    int frozenWidth() const;
    int frozenHeight() const;
    int shownFixedRows() const;
    void moveGreen(bool up);

    ListGridModel* model_ = nullptr;
    QTableView* frozen_ = nullptr;      // the fixed columns, all rows
    QTableView* frozenRows_ = nullptr;  // the fixed rows, all columns
    QTableView* corner_ = nullptr;      // fixed rows of the fixed columns
    MessageHost* host_ = nullptr;
    SelectOptions selectOptions_;
    int fixedColumns_ = 0;
    int fixedRows_ = 0;
    int minColumnWidth_ = 8;
    int viewHidden_ = 0;  // rows hidden in this view
    std::vector<int> newSortOrder_;
};

}  // namespace tav::ui

#include "ui/ListGridView.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <algorithm>

#include "core/Utf8.h"
#include "filelist/SortCompose.h"
#include "ui/ListGridModel.h"

namespace tav::ui {

namespace {

// Both views: a row height that never follows the contents, no word wrap.
void setUpTable(QTableView* view) {
    view->setWordWrap(false);
    view->setSelectionBehavior(QAbstractItemView::SelectItems);
    view->setSelectionMode(QAbstractItemView::ContiguousSelection);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setTextElideMode(Qt::ElideRight);
    view->setSortingEnabled(false);
    QHeaderView* rows = view->verticalHeader();
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setDefaultSectionSize(view->fontMetrics().height() + 4);
    rows->setMinimumSectionSize(1);
    rows->setVisible(false);
    QHeaderView* columns = view->horizontalHeader();
    columns->setSectionResizeMode(QHeaderView::Interactive);
    columns->setStretchLastSection(false);
    columns->setHighlightSections(false);
    columns->setSectionsClickable(true);
}

}  // namespace

ListGridView::ListGridView(QWidget* parent) : QTableView(parent) {
    setUpTable(this);
    setUpFrozen();
}

ListGridView::~ListGridView() = default;

QTableView* ListGridView::makeOverlay() {
    auto* v = new QTableView(this);
    setUpTable(v);
    v->setFocusPolicy(Qt::NoFocus);
    v->setFrameShape(QFrame::NoFrame);
    v->setAutoScroll(false);  // the grid scrolls; the overlays follow it
    v->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    v->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    v->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    v->hide();
    // Clicks on a fixed part act as clicks on the grid.
    v->viewport()->installEventFilter(this);
    return v;
}

void ListGridView::setUpFrozen() {
    frozen_ = makeOverlay();
    frozenRows_ = makeOverlay();
    corner_ = makeOverlay();
    frozenRows_->horizontalHeader()->hide();
    corner_->horizontalHeader()->hide();
    viewport()->stackUnder(frozen_);
    connect(verticalScrollBar(), &QAbstractSlider::valueChanged, frozen_->verticalScrollBar(),
            &QAbstractSlider::setValue);
    connect(horizontalScrollBar(), &QAbstractSlider::valueChanged, frozenRows_->horizontalScrollBar(),
            &QAbstractSlider::setValue);
    // Alt+Ctrl+click on a caption adds its column to `NS`.
    for (QHeaderView* header : {horizontalHeader(), frozen_->horizontalHeader()}) {
        connect(header, &QHeaderView::sectionClicked, this, [this](int section) {
            const Qt::KeyboardModifiers both = Qt::ControlModifier | Qt::AltModifier;
            if ((QGuiApplication::keyboardModifiers() & both) == both) addColumnToNewSortOrder(section);
        });
    }
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int logical, int, int size) {
        if (!frozen_) return;
        frozenRows_->setColumnWidth(logical, size);
        if (logical < fixedColumns_) {
            frozen_->setColumnWidth(logical, size);
            corner_->setColumnWidth(logical, size);
        }
        updateFrozenGeometry();
    });
}

void ListGridView::setGridModel(ListGridModel* model) {
    if (model_) disconnect(model_, nullptr, this, nullptr);
    model_ = model;
    setModel(model);
    for (QTableView* v : {frozen_, frozenRows_, corner_}) {
        v->setModel(model);
        v->setSelectionModel(selectionModel());
    }
    viewHidden_ = 0;
    if (!model) return;
    connect(model, &ListGridModel::hiddenRowsChanged, this, &ListGridView::syncHiddenRows);
    connect(model, &QAbstractItemModel::modelReset, this, [this] {
        viewHidden_ = 0;
        updateFrozenColumns();
    });
    connect(model, &QAbstractItemModel::columnsInserted, this, &ListGridView::updateFrozenColumns);
    // The fixed rows appear as the first rows stream in.
    connect(model, &QAbstractItemModel::rowsInserted, this, [this](const QModelIndex&, int first) {
        if (first < fixedRows_) updateFrozenColumns();
    });
    updateFrozenColumns();
}

void ListGridView::setSelectionColor(const QColor& color) {
    for (QTableView* v : {static_cast<QTableView*>(this), frozen_, frozenRows_, corner_}) {
        QPalette p = v->palette();
        p.setColor(QPalette::Active, QPalette::Highlight, color);
        p.setColor(QPalette::Inactive, QPalette::Highlight, color);
        const QColor text = color.lightness() > 128 ? QColor(Qt::black) : QColor(Qt::white);
        p.setColor(QPalette::Active, QPalette::HighlightedText, text);
        p.setColor(QPalette::Inactive, QPalette::HighlightedText, text);
        v->setPalette(p);
    }
}

std::pair<int, int> ListGridView::greenRows() const {
    if (!model_ || model_->rowCount() == 0) return {-1, -1};
    int top = -1, bottom = -1;
    if (selectionModel()) {
        for (const QItemSelectionRange& r : selectionModel()->selection()) {
            top = top < 0 ? r.top() : std::min(top, r.top());
            bottom = std::max(bottom, r.bottom());
        }
    }
    if (top < 0) {
        const QModelIndex current = currentIndex();
        if (!current.isValid()) return {-1, -1};
        top = bottom = current.row();
    }
    return {top, bottom};
}

std::vector<int> ListGridView::greenColTypes() const {
    std::vector<int> types;
    if (!model_) return types;
    int left = -1, right = -1;
    if (selectionModel()) {
        for (const QItemSelectionRange& r : selectionModel()->selection()) {
            left = left < 0 ? r.left() : std::min(left, r.left());
            right = std::max(right, r.right());
        }
    }
    if (left < 0) {
        if (!currentIndex().isValid()) return types;
        left = right = currentIndex().column();
    }
    for (int c = left; c <= right; ++c) types.push_back(model_->colTypeAt(c));
    return types;
}

void ListGridView::setGreen(int row, int column) {
    if (!model_ || row < 0 || row >= model_->rowCount()) return;
    const QModelIndex at = model_->index(row, std::clamp(column, 0, std::max(0, model_->columnCount() - 1)));
    selectionModel()->setCurrentIndex(at, QItemSelectionModel::ClearAndSelect);
    scrollTo(at);
}

// --- Fixed columns --------------------------------------------------------

void ListGridView::setFixedColumns(int count) {
    const QModelIndex current = currentIndex();
    fixedColumns_ = std::max(0, count);
    updateFrozenColumns();
    if (current.isValid()) setCurrentIndex(current);
}

void ListGridView::setFixedRows(int count) {
    fixedRows_ = std::max(0, count);
    updateFrozenColumns();
    if (currentIndex().isValid()) scrollTo(currentIndex());
}

int ListGridView::shownFixedRows() const { return std::min(fixedRows_, model_ ? model_->rowCount() : 0); }

void ListGridView::updateFrozenColumns() {
    const int columns = model_ ? model_->columnCount() : 0;
    const int fixed = std::min(fixedColumns_, columns);
    for (int c = 0; c < columns; ++c) {
        frozen_->setColumnHidden(c, c >= fixed);
        corner_->setColumnHidden(c, c >= fixed);
        frozenRows_->setColumnWidth(c, columnWidth(c));
        if (c < fixed) {
            frozen_->setColumnWidth(c, columnWidth(c));
            corner_->setColumnWidth(c, columnWidth(c));
        }
    }
    const int rows = shownFixedRows();
    frozen_->setVisible(fixed > 0);
    frozenRows_->setVisible(rows > 0);
    corner_->setVisible(fixed > 0 && rows > 0);
    updateFrozenGeometry();
}

int ListGridView::frozenWidth() const {
    int width = 0;
    const int fixed = std::min(fixedColumns_, model_ ? model_->columnCount() : 0);
    for (int c = 0; c < fixed; ++c) width += columnWidth(c);
    return width;
}

int ListGridView::frozenHeight() const {
    int height = 0;
    for (int r = 0; r < shownFixedRows(); ++r) height += rowHeight(r);
    return height;
}

void ListGridView::updateFrozenGeometry() {
    if (!frozen_) return;
    const int left = verticalHeader()->isVisible() ? verticalHeader()->width() + frameWidth() : frameWidth();
    const int top = frameWidth() + (horizontalHeader()->isVisible() ? horizontalHeader()->height() : 0);
    if (frozen_->isVisible()) {
        frozen_->horizontalHeader()->setFixedHeight(horizontalHeader()->height());
        frozen_->setGeometry(left, frameWidth(), frozenWidth(), viewport()->height() + top - frameWidth());
        frozen_->verticalScrollBar()->setValue(verticalScrollBar()->value());
    }
    if (frozenRows_->isVisible()) {
        frozenRows_->setGeometry(left, top, viewport()->width(), frozenHeight());
        frozenRows_->verticalScrollBar()->setValue(0);
        frozenRows_->horizontalScrollBar()->setValue(horizontalScrollBar()->value());
    }
    if (corner_->isVisible()) {
        corner_->setGeometry(left, top, frozenWidth(), frozenHeight());
        corner_->verticalScrollBar()->setValue(0);
    }
}

void ListGridView::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    updateFrozenGeometry();
}

void ListGridView::updateGeometries() {
    QTableView::updateGeometries();
    updateFrozenGeometry();
}

QModelIndex ListGridView::moveCursor(CursorAction cursorAction, Qt::KeyboardModifiers modifiers) {
    const QModelIndex current = QTableView::moveCursor(cursorAction, modifiers);
    // A column moving under the fixed part scrolls into sight.
    if (cursorAction == MoveLeft && current.isValid() && current.column() >= fixedColumns_ &&
        visualRect(current).topLeft().x() < frozenWidth()) {
        const int newValue = horizontalScrollBar()->value() + visualRect(current).topLeft().x() - frozenWidth();
        horizontalScrollBar()->setValue(newValue);
    }
    return current;
}

void ListGridView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    if (!index.isValid() || !model_) return QTableView::scrollTo(index, hint);
    // Fixed columns and fixed rows are always in sight: only the other
    // direction scrolls.
    const int fixedRows = shownFixedRows();
    const int keepTop = verticalScrollBar()->value();
    const int keepLeft = horizontalScrollBar()->value();
    QTableView::scrollTo(index, hint);
    if (index.column() < fixedColumns_) horizontalScrollBar()->setValue(keepLeft);
    if (index.row() < fixedRows) {
        verticalScrollBar()->setValue(keepTop);
    } else if (fixedRows > 0 && index.row() < verticalScrollBar()->value() + fixedRows) {
        // A row that came to rest under the fixed rows moves below them.
        verticalScrollBar()->setValue(std::max(0, index.row() - fixedRows));
    }
}

// --- Columns and rows -------------------------------------------------------

void ListGridView::setGridColumnWidth(int column, int pixels) {
    setColumnWidth(column, std::max(pixels, minColumnWidth_));
}

void ListGridView::setColumnAlignment(int column, Qt::Alignment alignment) {
    if (model_) model_->setAlignment(column, alignment);
}

bool ListGridView::swapColumns(int a, int b) {
    if (!model_ || !model_->swapColumns(a, b)) return false;
    const int wa = columnWidth(a), wb = columnWidth(b);
    setColumnWidth(a, wb);
    setColumnWidth(b, wa);
    updateFrozenColumns();
    return true;
}

void ListGridView::setRowHeight(int pixels) {
    for (QTableView* v : {static_cast<QTableView*>(this), frozen_, frozenRows_, corner_})
        v->verticalHeader()->setDefaultSectionSize(std::max(1, pixels));
    updateFrozenGeometry();
}

void ListGridView::syncHiddenRows() {
    if (!model_) return;
    if (model_->hiddenCount() == 0 && viewHidden_ == 0) return;
    const int rows = model_->rowCount();
    int hidden = 0;
    for (int r = 0; r < rows; ++r) {
        const bool out = model_->isRowHidden(r);
        if (out) ++hidden;
        if (isRowHidden(r) != out) {
            for (QTableView* v : {static_cast<QTableView*>(this), frozen_, frozenRows_, corner_}) v->setRowHidden(r, out);
        }
    }
    viewHidden_ = hidden;
    updateFrozenGeometry();
}

// --- BLUE selection and moves -----------------------------------------------

void ListGridView::toggleBlueOnGreen() {
    const auto [first, last] = greenRows();
    if (model_ && first >= 0) model_->toggleBlue(first, last);
}

void ListGridView::toggleBlueAndMoveDown() {
    toggleBlueOnGreen();
    const QModelIndex next = moveCursor(MoveDown, Qt::NoModifier);
    if (next.isValid()) setGreen(next.row(), next.column());
}

void ListGridView::selectAllBlue() {
    if (model_) model_->selectRows(kSelectAllRows | kSelectShownRows, selectOptions_, host_);
}

void ListGridView::clearBlue() {
    if (model_) model_->clearBlue();
}

void ListGridView::moveGreen(bool up) {
    auto [first, last] = greenRows();
    if (!model_ || first < 0) return;
    // The selection follows the rows through the model's move.
    if (model_->moveRows(first, last, up)) {
        scrollTo(currentIndex());
        emit rowsMoved();
    }
}

void ListGridView::moveGreenUp() { moveGreen(true); }
void ListGridView::moveGreenDown() { moveGreen(false); }

void ListGridView::hideGreenRows() {
    const auto [first, last] = greenRows();
    if (model_ && first >= 0) model_->hideRows(first, last);
}

void ListGridView::showAllRows() {
    if (model_) model_->showAllRows();
}

void ListGridView::addCurrentColumnToNewSortOrder() {
    if (currentIndex().isValid()) addColumnToNewSortOrder(currentIndex().column());
}

void ListGridView::addColumnToNewSortOrder(int column) {
    if (!model_) return;
    if (!AddToNewSortOrder(newSortOrder_, model_->colTypeAt(column))) return;
    emit newSortOrderChanged(
        QString::fromStdString(toUtf8(NewSortOrderMessage(model_->table().columns(), newSortOrder_))));
}

// --- Keys and mouse -------------------------------------------------------------

void ListGridView::keyPressEvent(QKeyEvent* event) {
    const Qt::KeyboardModifiers mods = event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
    const int key = event->key();
    if (mods == Qt::NoModifier && key == Qt::Key_Space) return toggleBlueOnGreen();
    if (mods == Qt::NoModifier && key == Qt::Key_Insert) return toggleBlueAndMoveDown();
    if (mods == Qt::ControlModifier && key == Qt::Key_A) return selectAllBlue();
    if (mods == (Qt::ControlModifier | Qt::ShiftModifier) && key == Qt::Key_A) return clearBlue();
    if (mods == Qt::AltModifier && key == Qt::Key_Up) return moveGreenUp();
    if (mods == Qt::AltModifier && key == Qt::Key_Down) return moveGreenDown();
    if (mods == (Qt::AltModifier | Qt::ControlModifier) && key == Qt::Key_S) return addCurrentColumnToNewSortOrder();
    QTableView::keyPressEvent(event);
}

void ListGridView::mousePressEvent(QMouseEvent* event) {
    const Qt::KeyboardModifiers mods = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier);
    if (mods == (Qt::ControlModifier | Qt::AltModifier)) {
        const QModelIndex at = indexAt(event->position().toPoint());
        if (at.isValid()) {
            addColumnToNewSortOrder(at.column());
            event->accept();
            return;
        }
    }
    QTableView::mousePressEvent(event);
}

bool ListGridView::eventFilter(QObject* watched, QEvent* event) {
    for (QTableView* v : {frozen_, frozenRows_, corner_}) {
        if (watched != v->viewport()) continue;
        if (event->type() == QEvent::Wheel) {
            // The grid scrolls, and the fixed parts follow it.
            QCoreApplication::sendEvent(viewport(), event);
            return true;
        }
        if (event->type() != QEvent::MouseButtonPress) continue;
        auto* mouse = static_cast<QMouseEvent*>(event);
        const Qt::KeyboardModifiers mods = mouse->modifiers() & (Qt::ControlModifier | Qt::AltModifier);
        if (mods == (Qt::ControlModifier | Qt::AltModifier)) {
            const QModelIndex at = v->indexAt(mouse->position().toPoint());
            if (at.isValid()) addColumnToNewSortOrder(at.column());
            return true;
        }
        setFocus();
    }
    return QTableView::eventFilter(watched, event);
}

}  // namespace tav::ui

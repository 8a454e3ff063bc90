// The list grid: rows streaming into the model while a refresh runs on its
// worker, the sort by two columns, BLUE selection by keys with its counts,
// moved and hidden rows, fixed columns, and a refresh that is stopped or
// replaced while the UI thread goes on serving its events.
#include <QtTest>

#include <QElapsedTimer>
#include <QHeaderView>
#include <QScrollBar>
#include <QTimer>
#include <fcntl.h>
#include <unistd.h>

#include <filesystem>

#include "core/ListText.h"
#include "filelist/ColumnLayout.h"
#include "filelist/grid_test_rows.h"
#include "support/ScriptedHost.h"
#include "support/TempDir.h"
#include "ui/ListGridModel.h"
#include "ui/ListGridView.h"
#include "ui/RefreshRunner.h"

using namespace tav;
using namespace tav::ui;
using gridtest::Item;

namespace {

std::vector<Item> sample() {
    return {
        {"(docs)", "<DIR>", "", "", "01/02/2020", "2020/02/01"},
        {"alpha", "txt", "1,234", "000000001234", "05/01/2021", "2021/01/05"},
        {"Beta", "htm", "10", "000000000010", "03/03/2019", "2019/03/03"},
        {"(src)", "<DIR>", "", "", "07/07/2022", "2022/07/07"},
        {"gamma", "txt", "10", "000000000010", "28/02/2021", "2021/02/28"},
    };
}

std::vector<Row> rowsOf(const std::vector<Item>& items) {
    RowTable t;
    gridtest::fill(t, items);
    return std::move(t.rows());
}

QStringList column(const QAbstractItemModel& m, int c) {
    QStringList v;
    for (int r = 0; r < m.rowCount(); ++r) v << m.index(r, c).data().toString();
    return v;
}

// A tree of `files` empty files in directories of 500.
void makeTree(const std::filesystem::path& root, int files, const std::string& prefix = "file") {
    for (int i = 0; i < files; ++i) {
        const auto dir = root / ("d" + std::to_string(i / 500));
        if (i % 500 == 0) std::filesystem::create_directories(dir);
        const auto file = dir / (prefix + std::to_string(i) + ".txt");
        const int fd = ::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        if (fd >= 0) ::close(fd);
    }
}

ListJobSpec specFor(const std::filesystem::path& dir) {
    ColumnRequest request;
    request.colTypes = {col::Number, col::FileName, col::Type, col::Size, col::Date, col::Time, col::FilePath};
    ListJobSpec spec;
    spec.layout = SetUpListColumns(request, factoryColumnSpecs(), WindowFormats{});
    spec.listSpec = joinList({dir.string() + "/"});
    spec.subdirsByDefault = true;
    return spec;
}

// The longest gap between the ticks of a 10 ms timer on the UI thread.
class StallWatch {
public:
    StallWatch() {
        clock_.start();
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            const qint64 now = clock_.elapsed();
            longest_ = std::max(longest_, now - last_);
            last_ = now;
        });
        timer_.start(10);
    }
    qint64 longest() const { return longest_; }

private:
    QTimer timer_;
    QElapsedTimer clock_;
    qint64 last_ = 0;
    qint64 longest_ = 0;
};

}  // namespace

class ListGridTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void streamedBatchesShowVisibleColumnsOnly();
    void directoriesGoToTheTopInTheOrderTheyCame();
    void sortByTwoColumnsOrdersRowsAndMarksTheirCaptions();
    void spaceAndInsToggleBlueOnGreenRowsWithCounts();
    void selectAllLeavesHiddenRowsOutAndAsksAboveTheLimit();
    void altDownMovesGreenRowsWithTheirMarksAndSelection();
    void hiddenRowsFollowTheirRowsThroughASort();
    void altCtrlAddsColumnsToTheNewSortOrder();
    void fixedColumnsStayInAnOverlayOfTheirOwnWidth();
    void swapColumnsKeepsWidthsAndAlignment();
    void fixedRowsStayUnderTheHeaderAndNoRowRestsBeneathThem();

    void refreshStreamsEveryFileIntoTheGrid();
    void stopKeepsTheRowsAndTheUiServesEvents();
    void newRefreshStopsTheOldOneAndDropsItsRows();

private:
    std::unique_ptr<ListGridModel> model_;
    std::unique_ptr<ListGridView> view_;
    tavtest::ScriptedHost host_;
};

void ListGridTest::init() {
    model_ = std::make_unique<ListGridModel>();
    view_ = std::make_unique<ListGridView>();
    view_->setGridModel(model_.get());
    view_->setMessageHost(&host_);
    view_->resize(700, 400);
    view_->show();
    QVERIFY(QTest::qWaitForWindowExposed(view_.get()));
    host_.clear();
}

void ListGridTest::cleanup() {
    view_.reset();
    model_.reset();
}

void ListGridTest::streamedBatchesShowVisibleColumnsOnly() {
    model_->beginList(gridtest::gridColumns());
    QSignalSpy inserted(model_.get(), &QAbstractItemModel::rowsInserted);
    auto rows = rowsOf(sample());
    std::vector<Row> first(std::make_move_iterator(rows.begin()), std::make_move_iterator(rows.begin() + 2));
    std::vector<Row> second(std::make_move_iterator(rows.begin() + 2), std::make_move_iterator(rows.end()));
    model_->appendRows(std::move(first));
    QCOMPARE(model_->rowCount(), 2);
    model_->appendRows(std::move(second));
    QCOMPARE(inserted.count(), 2);
    QCOMPARE(model_->rowCount(), 5);
    QCOMPARE(model_->columnCount(), 5);  // the two key columns stay out of sight
    QCOMPARE(model_->headerData(3, Qt::Horizontal).toString(), QString("Size"));
    QCOMPARE(column(*model_, 1), (QStringList{"(docs)", "alpha", "Beta", "(src)", "gamma"}));
    QCOMPARE(model_->index(1, 3).data(Qt::TextAlignmentRole).value<Qt::Alignment>(),
             Qt::AlignRight | Qt::AlignVCenter);
}

void ListGridTest::directoriesGoToTheTopInTheOrderTheyCame() {
    model_->setDirsToTop(true);
    model_->beginList(gridtest::gridColumns());
    auto rows = rowsOf(sample());
    std::vector<Row> first(std::make_move_iterator(rows.begin()), std::make_move_iterator(rows.begin() + 3));
    std::vector<Row> second(std::make_move_iterator(rows.begin() + 3), std::make_move_iterator(rows.end()));
    model_->appendRows(std::move(first));
    model_->appendRows(std::move(second));
    QCOMPARE(column(*model_, 1), (QStringList{"(docs)", "(src)", "alpha", "Beta", "gamma"}));
}

void ListGridTest::sortByTwoColumnsOrdersRowsAndMarksTheirCaptions() {
    model_->beginList(gridtest::gridColumns());
    model_->appendRows(rowsOf(sample()));
    model_->setSortMarks({"*", "+"});
    QSignalSpy layout(model_.get(), &QAbstractItemModel::layoutChanged);
    SortOrder order;
    order.colTypes = {col::Size, col::FileName, col::Title};
    order.ascending = false;
    const std::vector<int> used = model_->sortBy(order);
    QCOMPARE(used, (std::vector<int>{col::Size, col::FileName}));
    QCOMPARE(layout.count(), 1);
    QCOMPARE(column(*model_, 1), (QStringList{"alpha", "gamma", "Beta", "(src)", "(docs)"}));
    QCOMPARE(model_->headerData(3, Qt::Horizontal).toString(), QString("Size*"));
    QCOMPARE(model_->headerData(1, Qt::Horizontal).toString(), QString("FileName+"));
    QCOMPARE(model_->headerData(2, Qt::Horizontal).toString(), QString("Type"));
    model_->renumber();
    QCOMPARE(column(*model_, 0), (QStringList{"1", "2", "3", "4", "5"}));
}

void ListGridTest::spaceAndInsToggleBlueOnGreenRowsWithCounts() {
    model_->beginList(gridtest::gridColumns());
    model_->appendRows(rowsOf(sample()));
    QSignalSpy counts(model_.get(), &ListGridModel::selectionCountsChanged);
    view_->setGreen(0, 1);
    view_->selectionModel()->select(QItemSelection(model_->index(0, 1), model_->index(2, 1)),
                                    QItemSelectionModel::ClearAndSelect);
    QTest::keyClick(view_.get(), Qt::Key_Space);
    QVERIFY(model_->isBlue(0) && model_->isBlue(1) && model_->isBlue(2) && !model_->isBlue(3));
    QCOMPARE(model_->selectionCounts(), (SelectionCounts{1, 2, 1244}));
    QCOMPARE(counts.last(), (QList<QVariant>{qint64(1), qint64(2), qint64(1244)}));
    QCOMPARE(model_->index(1, 0).data(Qt::BackgroundRole).value<QColor>(), QColor(0, 0, 128));
    QVERIFY(!model_->index(3, 0).data(Qt::BackgroundRole).isValid());

    view_->setGreen(1, 1);
    QTest::keyClick(view_.get(), Qt::Key_Insert);  // row 1 out, cursor to row 2
    QVERIFY(!model_->isBlue(1));
    QCOMPARE(view_->currentIndex().row(), 2);
    QTest::keyClick(view_.get(), Qt::Key_Insert);  // row 2 out
    QCOMPARE(model_->selectionCounts(), (SelectionCounts{1, 0, 0}));

    model_->setSizeReversible(false);
    QTest::keyClick(view_.get(), Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(model_->selectionCounts(), (SelectionCounts{2, 3, 0}));
    QTest::keyClick(view_.get(), Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(model_->blueCount(), 0);
    QCOMPARE(model_->selectionCounts(), SelectionCounts{});
}

void ListGridTest::selectAllLeavesHiddenRowsOutAndAsksAboveTheLimit() {
    model_->beginList(gridtest::gridColumns());
    model_->appendRows(rowsOf(sample()));
    view_->setGreen(1, 0);
    view_->hideGreenRows();
    QVERIFY(view_->isRowHidden(1));
    SelectOptions options;
    options.warnAbove = 3;
    view_->setSelectOptions(options);
    host_.answer(2);  // No
    QTest::keyClick(view_.get(), Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(host_.asked().size(), size_t(1));
    QVERIFY(host_.asked()[0].message.find("Files Selected: 4\r") != std::string::npos);
    QCOMPARE(model_->blueCount(), 0);
    host_.answer(1);  // Yes
    QTest::keyClick(view_.get(), Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(model_->blueCount(), 4);
    QVERIFY(!model_->isBlue(1));
    view_->showAllRows();
    QVERIFY(!view_->isRowHidden(1));
}

void ListGridTest::altDownMovesGreenRowsWithTheirMarksAndSelection() {
    model_->beginList(gridtest::gridColumns());
    model_->appendRows(rowsOf(sample()));
    model_->setBlue(1, 1, true);
    view_->setGreen(1, 1);
    view_->selectionModel()->select(QItemSelection(model_->index(1, 1), model_->index(2, 1)),
                                    QItemSelectionModel::ClearAndSelect);
    QSignalSpy moved(view_.get(), &ListGridView::rowsMoved);
    QTest::keyClick(view_.get(), Qt::Key_Down, Qt::AltModifier);
    QTest::keyClick(view_.get(), Qt::Key_Down, Qt::AltModifier);
    QTest::keyClick(view_.get(), Qt::Key_Down, Qt::AltModifier);  // at the end: stays
    QCOMPARE(moved.count(), 2);
    QCOMPARE(column(*model_, 1), (QStringList{"(docs)", "(src)", "gamma", "alpha", "Beta"}));
    QCOMPARE(view_->greenRows(), std::make_pair(3, 4));
    QCOMPARE(view_->currentIndex().row(), 3);
    QVERIFY(model_->isBlue(3));
    QTest::keyClick(view_.get(), Qt::Key_Up, Qt::AltModifier);
    QCOMPARE(column(*model_, 1), (QStringList{"(docs)", "(src)", "alpha", "Beta", "gamma"}));
    QCOMPARE(view_->greenRows(), std::make_pair(2, 3));
}

void ListGridTest::hiddenRowsFollowTheirRowsThroughASort() {
    model_->beginList(gridtest::gridColumns());
    model_->appendRows(rowsOf(sample()));
    model_->hideRows(2, 2);  // Beta
    QVERIFY(view_->isRowHidden(2));
    SortOrder order;
    order.colTypes = {col::FileName};
    model_->sortBy(order);
    // (docs) (src) alpha Beta gamma
    QVERIFY(view_->isRowHidden(3));
    QVERIFY(!view_->isRowHidden(2));
    QVERIFY(view_->fixedPart()->isRowHidden(3) || !view_->fixedPart()->isVisible());
}

void ListGridTest::altCtrlAddsColumnsToTheNewSortOrder() {
    model_->beginList(gridtest::gridColumns());
    model_->appendRows(rowsOf(sample()));
    QSignalSpy composed(view_.get(), &ListGridView::newSortOrderChanged);
    view_->setGreen(0, 4);
    QTest::keyClick(view_.get(), Qt::Key_S, Qt::AltModifier | Qt::ControlModifier);
    const QPoint sizeCell = view_->visualRect(model_->index(1, 3)).center();
    QTest::mouseClick(view_->viewport(), Qt::LeftButton, Qt::AltModifier | Qt::ControlModifier, sizeCell);
    QTest::keyClick(view_.get(), Qt::Key_S, Qt::AltModifier | Qt::ControlModifier);  // Date again: no change
    QCOMPARE(composed.count(), 2);
    QCOMPARE(composed.last().at(0).toString(),
             QString("New Sort Order now >>Date Size<< - Use Alt_Ctrl to add another column and sort."));
    QCOMPARE(view_->newSortOrder(), (std::vector<int>{col::Date, col::Size}));
}

void ListGridTest::fixedColumnsStayInAnOverlayOfTheirOwnWidth() {
    model_->beginList(gridtest::gridColumns());
    model_->appendRows(rowsOf(sample()));
    view_->setColumnWidth(0, 40);
    view_->setColumnWidth(1, 90);
    view_->setFixedColumns(2);
    QTableView* fixed = view_->fixedPart();
    QVERIFY(fixed->isVisible());
    QVERIFY(!fixed->isColumnHidden(0) && !fixed->isColumnHidden(1) && fixed->isColumnHidden(2));
    QCOMPARE(fixed->width(), 130);
    QCOMPARE(fixed->selectionModel(), view_->selectionModel());
    view_->setColumnWidth(1, 60);
    QCOMPARE(fixed->width(), 100);
    view_->setFixedColumns(0);
    QVERIFY(!fixed->isVisible());
}

void ListGridTest::swapColumnsKeepsWidthsAndAlignment() {
    model_->beginList(gridtest::gridColumns());
    model_->appendRows(rowsOf(sample()));
    view_->setMinColumnWidth(30);
    view_->setGridColumnWidth(1, 10);
    QCOMPARE(view_->columnWidth(1), 30);
    view_->setGridColumnWidth(3, 70);
    QVERIFY(view_->swapColumns(1, 3));
    QCOMPARE(model_->headerData(1, Qt::Horizontal).toString(), QString("Size"));
    QCOMPARE(view_->columnWidth(1), 70);
    QCOMPARE(view_->columnWidth(3), 30);
    QCOMPARE(model_->index(1, 1).data().toString(), QString("1,234"));
    QCOMPARE(model_->alignment(1), Qt::AlignRight | Qt::AlignVCenter);
    QVERIFY(!view_->swapColumns(1, 9));
}

void ListGridTest::fixedRowsStayUnderTheHeaderAndNoRowRestsBeneathThem() {
    model_->beginList(gridtest::gridColumns());
    std::vector<Item> many;
    for (int i = 0; i < 300; ++i) many.push_back({"f" + std::to_string(i), "txt", "1", "1", "", ""});
    model_->appendRows(rowsOf(many));
    view_->setFixedColumns(1);
    view_->setFixedRows(2);
    QTableView* rows = view_->fixedRowsPart();
    QVERIFY(rows->isVisible() && view_->fixedCornerPart()->isVisible());
    QCOMPARE(rows->height(), 2 * view_->rowHeight(0));
    QCOMPARE(view_->fixedCornerPart()->width(), view_->columnWidth(0));

    view_->setGreen(200, 1);
    QCOMPARE(rows->indexAt(QPoint(5, 2)).row(), 0);
    QCOMPARE(rows->indexAt(QPoint(5, view_->rowHeight(0) + 2)).row(), 1);
    const int top = view_->verticalScrollBar()->value();
    QVERIFY(top > 100);
    // Up from the first row in sight below the fixed rows: it must not
    // slip beneath them.
    view_->setGreen(top + 2, 1);
    QTest::keyClick(view_.get(), Qt::Key_Up);
    QCOMPARE(view_->currentIndex().row(), top + 1);
    QVERIFY(view_->verticalScrollBar()->value() + 2 <= top + 1);
    // The fixed rows themselves never scroll the grid.
    const int before = view_->verticalScrollBar()->value();
    view_->setGreen(0, 1);
    QCOMPARE(view_->verticalScrollBar()->value(), before);
    view_->setFixedRows(0);
    QVERIFY(!rows->isVisible() && !view_->fixedCornerPart()->isVisible());
}

void ListGridTest::refreshStreamsEveryFileIntoTheGrid() {
    tavtest::TempDir dir;
    makeTree(dir.path(), 1200);
    RefreshRunner runner(model_.get());
    QSignalSpy finished(&runner, &RefreshRunner::finished);
    runner.start(specFor(dir.path()));
    QVERIFY(runner.isRunning());
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, 20000);
    QVERIFY(!runner.isRunning());
    QCOMPARE(finished.last().at(1).toBool(), true);
    const auto totals = finished.last().at(0).value<ListTotals>();
    QCOMPARE(totals.filesListed, qint64(1203));  // 1200 files and 3 directories
    QCOMPARE(model_->rowCount(), 1203);
    QCOMPARE(model_->headerData(1, Qt::Horizontal).toString(), QString("FileName"));
}

void ListGridTest::stopKeepsTheRowsAndTheUiServesEvents() {
    tavtest::TempDir dir;
    makeTree(dir.path(), 40000);
    RefreshRunner runner(model_.get());
    QSignalSpy finished(&runner, &RefreshRunner::finished);
    QSignalSpy progress(&runner, &RefreshRunner::progress);
    StallWatch watch;
    runner.start(specFor(dir.path()));
    QTRY_VERIFY_WITH_TIMEOUT(model_->rowCount() > 0, 20000);
    QElapsedTimer sinceStop;
    sinceStop.start();
    runner.stop();
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, 5000);
    const qint64 stopTook = sinceStop.elapsed();
    const int rows = model_->rowCount();
    QVERIFY2(rows > 0 && rows < 40000, qPrintable(QString::number(rows)));
    QCOMPARE(finished.last().at(1).toBool(), false);
    QVERIFY(!finished.last().at(0).value<ListTotals>().complete);
    QTest::qWait(200);
    QCOMPARE(model_->rowCount(), rows);  // nothing comes after the end
    qInfo("rows before the stop %d, stop took %lld ms, longest UI stall %lld ms, progress reports %lld", rows,
          stopTook, watch.longest(), static_cast<long long>(progress.count()));
    QVERIFY2(stopTook < 1000, qPrintable(QString::number(stopTook)));
    QVERIFY2(watch.longest() < 250, qPrintable(QString::number(watch.longest())));
}

void ListGridTest::newRefreshStopsTheOldOneAndDropsItsRows() {
    tavtest::TempDir big, small;
    makeTree(big.path(), 20000);
    makeTree(small.path(), 20, "small");
    RefreshRunner runner(model_.get());
    QSignalSpy finished(&runner, &RefreshRunner::finished);
    runner.start(specFor(big.path()));
    QTRY_VERIFY_WITH_TIMEOUT(model_->rowCount() > 0, 20000);
    // On a slow machine the big list may have ended already: its end counts.
    const int before = static_cast<int>(finished.count());
    runner.start(specFor(small.path()));
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), before + 1, 10000);
    QTRY_COMPARE_WITH_TIMEOUT(runner.retiringCount(), 0, 5000);
    QTest::qWait(200);
    QCOMPARE(finished.count(), before + 1);
    QCOMPARE(finished.last().at(1).toBool(), true);
    QCOMPARE(model_->rowCount(), 21);
    for (const QString& name : column(*model_, 1))
        QVERIFY2(name.startsWith("small") || name == "(d0)", qPrintable(name));
}

QTEST_MAIN(ListGridTest)
#include "list_grid_test.moc"

#include "ui/ListSection.h"

#include <QHeaderView>
#include <QLocale>
#include <QVBoxLayout>
#include <algorithm>

#include "core/ListText.h"
#include "filelist/ColumnTypes.h"
#include "filelist/FormatChecks.h"
#include "frame/WindowState.h"
#include "settings/IniNumbers.h"
#include "settings/IniStore.h"
#include "ui/AppContext.h"
#include "ui/ListGridModel.h"
#include "ui/ListGridView.h"
#include "ui/RefreshRunner.h"

namespace tav::ui {

namespace {
constexpr int kTwipsPerPixel = 15;

std::vector<int> numbers(const std::string& list) {
    std::vector<int> out;
    for (const std::string& item : splitItems(list)) {
        if (item.empty()) continue;
        out.push_back(static_cast<int>(numberAtStart(item).value_or(0)));
    }
    return out;
}

std::string numbersText(const std::vector<int>& values) {
    std::vector<std::string> parts;
    parts.reserve(values.size());
    for (int v : values) parts.push_back(std::to_string(v));
    return joinList(parts);
}

// The stored alignment codes of the grid: 0-2 left, 3-5 centre, 6-8 right,
// 9 the column's own default.
Qt::Alignment alignmentOf(int code, int colType) {
    if (code < 0 || code > 8) return ListGridModel::defaultAlignment(colType);
    const Qt::Alignment h = code < 3 ? Qt::AlignLeft : code < 6 ? Qt::AlignHCenter : Qt::AlignRight;
    return h | Qt::AlignVCenter;
}

QString fromStd(const std::string& s) { return QString::fromStdString(s); }
}  // namespace

ListSection::ListSection(AppContext& app, QWidget* parent)
    : QWidget(parent), app_(app), model_(new ListGridModel(this)), view_(new ListGridView), runner_(new RefreshRunner(model_, this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_);
    view_->setObjectName("fFDgrid");
    view_->setGridModel(model_);
    view_->setMessageHost(&app_.host());
    runner_->setMessageHost(&app_.host());
    setFocusProxy(view_);

    IniStore& ini = app_.ini();
    const std::string selColour = ini.mode(kMissingEmpty).get("Main", "Back color Selection");
    if (!selColour.empty()) {
        const auto bgr = static_cast<unsigned>(numberAtStart(selColour).value_or(0));
        view_->setSelectionColor(QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF));
    }
    SelectOptions options;
    options.warnAbove = ini.mode(kMissingEmpty).getInt("Main", "EN_SELWNGWHENCntRowGT");
    view_->setSelectOptions(options);
    const int minWidth = ini.mode(kMissingEmpty).getInt("Main", "Min Col Width");
    if (minWidth > 0) view_->setMinColumnWidth(std::max(1, minWidth / kTwipsPerPixel));

    connect(runner_, &RefreshRunner::listBegun, this, [this] { applyColumns(); });
    connect(runner_, &RefreshRunner::progress, this, [this](qint64 listed, qint64 examined, const QString& current) {
        emit progress(QStringLiteral("%1 listed, %2 examined: %3").arg(listed).arg(examined).arg(current));
    });
    connect(runner_, &RefreshRunner::fileError, this,
            [this](const QString&, const QString& text) { emit fileError(text); });
    connect(runner_, &RefreshRunner::finished, this, &ListSection::onFinished);
    connect(model_, &ListGridModel::selectionCountsChanged, this, [this] { emit selectionCountsChanged(); });
    connect(view_->horizontalHeader(), &QHeaderView::sectionResized, this, [this] {
        if (!applying_) saveWidths();
    });
    connect(view_, &ListGridView::newSortOrderChanged, this, &ListSection::statusLine);
    connect(view_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& now) { emit currentRowChanged(now.isValid() ? now.row() : -1); });
}

ListSection::~ListSection() = default;

void ListSection::applyWindow(const WindowState& w) {
    std::vector<UserColumn> users;
    columnList_ = readColumnList(w.value("Last Col List"), app_.ini(), users);
    widths_ = numbers(w.value("Column Widths"));
    alignments_ = numbers(w.value("Column Alignments"));
    sortOrder_ = numbers(w.value("Sort col Index"));
    ascending_ = w.value("Sort Ascending").empty() || w.flag("Sort Ascending");
    caseSensitive_ = w.flag("Sort Case Sensitive");
    noSort_ = w.menu("VN").checked;
    fixedCols_ = static_cast<int>(w.number("Fixed Cols", 0));
    if (model_->columnCount() > 0) applyColumns();
}

void ListSection::applyColumns() {
    applying_ = true;
    for (std::size_t i = 0; i < columnList_.size(); ++i) {
        const int column = model_->columnOfColType(columnList_[i].colType);
        if (column < 0) continue;
        if (i < widths_.size() && widths_[i] > 0) view_->setGridColumnWidth(column, widths_[i] / kTwipsPerPixel);
        const int code = i < alignments_.size() ? alignments_[i] : 9;
        view_->setColumnAlignment(column, alignmentOf(code, columnList_[i].colType));
    }
    view_->setFixedColumns(std::clamp(fixedCols_, 0, std::max(0, model_->columnCount() - 1)));
    applying_ = false;
}

void ListSection::saveWidths() {
    std::vector<int> widths = widths_;
    widths.resize(columnList_.size(), 0);
    for (std::size_t i = 0; i < columnList_.size(); ++i) {
        const int column = model_->columnOfColType(columnList_[i].colType);
        if (column >= 0) widths[i] = view_->columnWidth(column) * kTwipsPerPixel;
    }
    if (widths == widths_) return;
    widths_ = widths;
    emit saveEntry("Column Widths", fromStd(numbersText(widths_)));
}

void ListSection::refresh(RefreshSpec spec, const WindowState& w) {
    applyWindow(w);
    columnList_ = spec.columnList;
    model_->setDirsToTop(spec.dirsToTop);
    model_->setSizeReversible(SizeFormatIsReversible(w.value("Size format")));
    runner_->start(std::move(spec.job));
}

void ListSection::stop() { runner_->stop(); }
bool ListSection::refreshing() const { return runner_->isRunning(); }

void ListSection::onFinished(const ListTotals& totals, bool ranToEnd) {
    IniStore& ini = app_.ini();
    if (!noSort_ && !sortOrder_.empty() && model_->rowCount() > 1) {
        SortOrder order;
        order.colTypes = sortOrder_;
        order.ascending = ascending_;
        order.caseSensitive = caseSensitive_;
        model_->sortBy(order);
        if (ini.mode(kMissingEmpty).getBool("Main", "Renumber after sort")) model_->renumber();
    } else if (ini.mode(kMissingEmpty).getBool("Main", "Renumber after refresh")) {
        model_->renumber();
    }
    if (model_->rowCount() > 0 && !view_->currentIndex().isValid()) view_->setGreen(0, 0);
    emit finished(totals);
    (void)ranToEnd;
}

int ListSection::rowCount() const { return model_->rowCount(); }

QString ListSection::cell(int row, int colType) const {
    const int column = model_->columnOfColType(colType);
    if (column < 0 || row < 0 || row >= model_->rowCount()) return {};
    return model_->data(model_->index(row, column)).toString();
}

QString ListSection::pathAt(int row) const {
    const auto& rows = model_->table().rows();
    if (row < 0 || static_cast<std::size_t>(row) >= rows.size()) return {};
    return fromStd(rows[static_cast<std::size_t>(row)].path);
}

void ListSection::sortBy(const std::vector<int>& colTypes) {
    SortOrder order;
    order.colTypes = colTypes;
    order.ascending = ascending_;
    order.caseSensitive = caseSensitive_;
    const std::vector<int> used = model_->sortBy(order);
    sortOrder_ = used.empty() ? colTypes : used;
    emit saveEntry("Sort col Index", fromStd(numbersText(sortOrder_)));
    if (app_.ini().mode(kMissingEmpty).getBool("Main", "Renumber after sort")) model_->renumber();
    QStringList captions;
    for (int t : sortOrder_) captions << fromStd(std::string(colTypeCaption(t)));
    emit statusLine("Done: Sort File List by: " + captions.join(' '));
}

void ListSection::markRows(const std::vector<int>& rows) {
    for (int r : rows) model_->setBlue(r, r, true);
}

qint64 ListSection::selectedFiles() const { return model_->selectionCounts().files; }
qint64 ListSection::selectedDirs() const { return model_->selectionCounts().dirs; }
qint64 ListSection::selectedBytes() const { return model_->selectionCounts().bytes; }

QString ListSection::selectedText() const {
    const SelectionCounts c = model_->selectionCounts();
    if (c.files == 0 && c.dirs == 0) return {};
    return QStringLiteral("%1 files, %2 dirs, %3 bytes")
        .arg(c.files)
        .arg(c.dirs)
        .arg(QLocale().toString(static_cast<qlonglong>(c.bytes)));
}

}  // namespace tav::ui

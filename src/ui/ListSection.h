#pragma once
// The List section of a File List window (`fFileListframe`): the grid, the
// refresh that streams into it, and what the window keeps of it (column
// widths and alignments, fixed columns, the sort order). Every change the
// user makes here is handed to the window as an entry to save.
#include <QString>
#include <QWidget>
#include <string>
#include <vector>

#include "filelist/RowSink.h"
#include "frame/RefreshSpec.h"

namespace tav {
class WindowState;
}

namespace tav::ui {

class AppContext;
class ListGridModel;
class ListGridView;
class RefreshRunner;

class ListSection : public QWidget {
    Q_OBJECT
public:
    explicit ListSection(AppContext& app, QWidget* parent = nullptr);
    ~ListSection() override;

    // Takes up the window's columns, widths, alignments, fixed columns and sort.
    void applyWindow(const WindowState& window);
    void refresh(RefreshSpec spec, const WindowState& window);
    void stop();
    bool refreshing() const;

    ListGridView* view() const { return view_; }
    ListGridModel* model() const { return model_; }

    int rowCount() const;
    // The display text of a row's cell of a ColType; empty when not shown.
    QString cell(int row, int colType) const;
    // The full path of a row's item.
    QString pathAt(int row) const;

    // `SortGrid`: sorts by the order, keeps it as `Sort col Index`.
    void sortBy(const std::vector<int>& colTypes);
    const std::vector<int>& sortOrder() const { return sortOrder_; }
    // The BLUE selection.
    void markRows(const std::vector<int>& rows);
    qint64 selectedFiles() const;
    qint64 selectedDirs() const;
    qint64 selectedBytes() const;
    QString selectedText() const;

signals:
    void progress(const QString& text);
    void fileError(const QString& line);
    void finished(const tav::ListTotals& totals);
    void selectionCountsChanged();
    void statusLine(const QString& line);
    // An entry of the window's sections changed here.
    void saveEntry(const QString& entry, const QString& value);
    // The GREEN row changed to another file.
    void currentRowChanged(int row);

private:
    void applyColumns();
    void saveWidths();
    void onFinished(const ListTotals& totals, bool ranToEnd);

    AppContext& app_;
    ListGridModel* model_;
    ListGridView* view_;
    RefreshRunner* runner_;
    std::vector<ColumnListItem> columnList_;
    std::vector<int> widths_;       // twips, parallel to columnList_
    std::vector<int> alignments_;   // stored alignment codes, parallel
    std::vector<int> sortOrder_;    // `SO`
    bool ascending_ = true;
    bool caseSensitive_ = false;
    bool noSort_ = false;  // `VN`: a refresh leaves the rows as listed
    int fixedCols_ = 0;
    bool applying_ = false;
};

}  // namespace tav::ui

#pragma once
// A File List window: the Text section across the top, the left column
// with the Top List over the directory tree, and the list grid. Its state
// lives in its four INI sections and every change is written at once, so a
// crash loses nothing but the change under way.
#include <QStringList>
#include <QWidget>
#include <memory>
#include <string>

#include "filelist/ListSelection.h"
#include "filelist/RowSink.h"
#include "frame/BarLayout.h"
#include "frame/WindowState.h"
#include "ui/ShowDataOwner.h"

class QSplitter;
class QListWidget;
class QLabel;

namespace tav {
class WindowStore;
}

namespace tav::ui {

class AppContext;
class TextSectionView;
class BusTimer;
class DirectoryTree;
class ListSection;

class FileListWindow : public QWidget, public ShowDataOwner {
    Q_OBJECT
public:
    FileListWindow(AppContext& app, WindowStore& store, QWidget* parent = nullptr);
    ~FileListWindow() override;

    // An existing window from its section; false when the section is not usable.
    bool loadFrom(const std::string& windowSection);
    // A new window whose sections are written already.
    void adopt(WindowState state);

    WindowState& state() { return state_; }
    const std::string& section() const { return state_.sections.window; }
    WindowStore& store() { return store_; }

    // Writes one entry of the window's sections now.
    void save(std::string_view entry, std::string value);

    // The window's title: the type's caption and the list text.
    QString caption() const;

    // The list.
    void refresh();
    void stop();
    bool refreshing() const;
    ListSection* list() const { return list_; }
    // The window's deferred action bus ("Dosort" ...).
    BusTimer* bus() const { return bus_; }

    // The Text section.
    TextSectionView* textView() const { return text_; }
    bool showText(const QString& path);
    // The file of a row in the Text section, as `Show file as (auto read/alt-up+dn)`
    // says; `Last Txt PAFN` keeps it for the next start.
    bool showRowText(int row);
    // Alt+Up/Down: the cursor goes to the previous or next file row and shows it.
    void stepFileRow(int direction);
    // `ON`, `OU`, `OM`: the current row's file in the popup, plain, raw or as a hex dump.
    void showCurrentFile(int kind);
    // `OE`: the current cell at full size.
    void showCurrentCell();
    // `OB`: Show Info for the text in the Text section, or in the popup.
    void showTextInfo();

    // From the popup this window opened.
    void popupTextShown(const QString& path) override;
    bool popupKey(QKeyEvent* event) override;

    // Sections shown (`VT`, `VR`, `VL`), each saved as it changes.
    void setSectionShown(std::string_view key, bool on);
    bool sectionShown(std::string_view key) const;

    // Sizes of the three sections in twips, as saved.
    int textFrameHeight() const;
    int listDirWidth() const;
    int topListHeight() const;
    void setTextFrameHeight(int twips);
    void setListDirWidth(int twips);
    void setTopListHeight(int twips);

    // Flips the menu state of a window key (`LM`, `VS`, `wB` ...), saved at once.
    void toggleKey(std::string_view key);

    // The bars: sizes in twips, the toggle between two saved positions
    // (`WTT`, `WTR`, `WTL`), saving a toggle position (1 or 2), keyed moves.
    BarGeometry barGeometry() const;
    int barSize(Bar bar) const;
    void setBarSize(Bar bar, int twips);
    void toggleBar(Bar bar);
    void saveTogglePosition(Bar bar, int which);
    void moveBarByPercent(Bar bar, int direction);

    // `WG`: the Window Type.
    void changeWindowType();

    // What is listed: the selection as the dialogs edit it, and its change.
    ListSelection listSelection() const;
    void applySelection(const ListSelection& selection);
    void selectDirectories();  // `LR`, `ID`
    void selectFileTypes();    // `LB`, `IB`
    void focusSection(std::string_view which);
    // The tree of `Multi Dirs` adds a directory to the list spec or takes it out.
    void editListSpec(const QString& path, bool add);

    // Sorts: by an order (kept as `Sort col Index`), again by the kept one.
    void sortBy(const std::vector<int>& colTypes);
    void sortAgain();
    QString sortDescription() const;
    // `LEC` (0): the columns up to the current one are fixed; `LEA` (1) one
    // more, `LER` (-1) one fewer.
    void fixColumns(int change);

    // The status lists: results (`SL`), directories used, errors (`EL`).
    const QStringList& results() const { return results_; }
    const QStringList& errors() const { return errors_; }
    const QStringList& directories() const { return directories_; }
    void addResult(const QString& line);
    QString progressText() const { return progress_; }
    QString selectedText() const;

    // True while the main window closes: the window keeps its place on the
    // list of current windows.
    static void setMainClosing(bool on);

signals:
    void statusChanged();
    void captionChanged(const QString& caption);
    // The directory dialog asked for its result in a new window.
    void newWindowWanted(const tav::ListSelection& selection);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void build();
    void applyState();
    void applySizes();
    // The tree shows the listed directory, or ticks the listed ones with `Multi Dirs`.
    void syncTree();
    void saveSizes();
    void onRefreshFinished(const ListTotals& totals);
    void runBusCommand(const std::string& caption, const std::string& tag);

    AppContext& app_;
    WindowStore& store_;
    WindowState state_;
    QSplitter* outer_ = nullptr;  // Text section over the rest
    QSplitter* lower_ = nullptr;  // left column beside the list
    QSplitter* left_ = nullptr;   // Top List over the tree
    TextSectionView* text_ = nullptr;
    QListWidget* topList_ = nullptr;
    DirectoryTree* tree_ = nullptr;
    ListSection* list_ = nullptr;
    BusTimer* bus_ = nullptr;
    QStringList results_, errors_, directories_;
    QString progress_;
    QString listText_;
    bool applying_ = false;  // sizes are being put in place, not moved by the user
};

}  // namespace tav::ui

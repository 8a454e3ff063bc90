#include "ui/FileListWindow.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>

#include "core/ListText.h"
#include "dialogs/MessageShortcuts.h"
#include "filelist/ColumnTypes.h"
#include "filelist/ListSpecEdit.h"
#include "filelist/MultiDirsToggle.h"
#include "frame/RefreshSpec.h"
#include "frame/WindowStore.h"
#include "frame/WindowTypes.h"
#include "ui/FileTypesDialog.h"
#include "ui/ListGridModel.h"
#include "ui/ListGridView.h"
#include "ui/SelectDirDialog.h"
#include "ui/ShowDataWindow.h"
#include "ui/ShowInfoAction.h"
#include "settings/IniStore.h"
#include "ui/AppContext.h"
#include "ui/BusTimer.h"
#include "ui/DirectoryTree.h"
#include "ui/ListSection.h"
#include "ui/TextSectionView.h"

namespace tav::ui {

namespace {
// Sizes are kept in twips, 15 to a pixel at the usual 96 dots an inch.
constexpr int kTwipsPerPixel = 15;
bool gMainClosing = false;

int toPixels(int twips) { return std::max(0, twips / kTwipsPerPixel); }
int toTwips(int pixels) { return pixels * kTwipsPerPixel; }

QString fromStd(const std::string& s) { return QString::fromStdString(s); }
}  // namespace

void FileListWindow::setMainClosing(bool on) { gMainClosing = on; }

FileListWindow::FileListWindow(AppContext& app, WindowStore& store, QWidget* parent)
    : QWidget(parent), app_(app), store_(store) {
    setObjectName("LHform");
    setAttribute(Qt::WA_DeleteOnClose);
    bus_ = new BusTimer([this](const BusCommand& c) { runBusCommand(c.caption, c.tag); }, this,
                        [this](const ActionBus& bus) {
                            auto* sub = qobject_cast<QMdiSubWindow*>(parentWidget());
                            const bool active = sub && sub->mdiArea() && sub->mdiArea()->activeSubWindow() == sub;
                            return fileListMayServe(bus, active);
                        });
    build();
}

FileListWindow::~FileListWindow() = default;

void FileListWindow::build() {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    outer_ = new QSplitter(Qt::Vertical, this);
    outer_->setObjectName("fSepPic_TextDFLists");
    outer_->setChildrenCollapsible(true);
    layout->addWidget(outer_);

    text_ = new TextSectionView(app_.textCache(), app_.host());
    text_->setObjectName("fTextframe");
    // A plain text made on a worker reports when it is there, or stopped.
    connect(text_, &TextSectionView::plainShown, this, [this](const ShowFileResult& result) {
        progress_ = fromStd(result.status);
        emit statusChanged();
    });
    connect(text_, &TextSectionView::busyChanged, this, [this](const QString& busy) {
        progress_ = busy;
        emit statusChanged();
    });
    outer_->addWidget(text_);

    lower_ = new QSplitter(Qt::Horizontal);
    lower_->setObjectName("fSepPic_DirFiles");
    outer_->addWidget(lower_);

    left_ = new QSplitter(Qt::Vertical);
    left_->setObjectName("fSepPic_TopListSelectDir");
    lower_->addWidget(left_);
    topList_ = new QListWidget;
    topList_->setObjectName("fTopListframe");
    left_->addWidget(topList_);
    tree_ = new DirectoryTree;
    tree_->setObjectName("fSelectDir");
    left_->addWidget(tree_);
    connect(tree_, &DirectoryTree::directoryChosen, this, [this](const QString& path) {
        if (state_.flag("Multi Dirs") || applying_) return;
        std::string dir = path.toStdString();
        if (!dir.empty() && dir.back() != '/') dir += '/';
        save("Last Dir", joinList({dir}));
        emit captionChanged(caption());
        if (state_.flag("Read Files")) refresh();
    });
    connect(tree_, &DirectoryTree::addRequested, this, [this](const QString& path) { editListSpec(path, true); });
    connect(tree_, &DirectoryTree::removeRequested, this, [this](const QString& path) { editListSpec(path, false); });

    list_ = new ListSection(app_);
    list_->setObjectName("fFileListframe");
    lower_->addWidget(list_);
    lower_->setStretchFactor(1, 1);
    outer_->setStretchFactor(1, 1);

    connect(list_, &ListSection::progress, this, [this](const QString& text) {
        progress_ = text;
        emit statusChanged();
    });
    connect(list_, &ListSection::fileError, this, [this](const QString& line) {
        errors_ << line;
        emit statusChanged();
    });
    connect(list_, &ListSection::finished, this, &FileListWindow::onRefreshFinished);
    connect(list_, &ListSection::selectionCountsChanged, this, &FileListWindow::statusChanged);
    connect(list_, &ListSection::statusLine, this, [this](const QString& line) { addResult(line); });
    // Alt+Up/Down step from file to file wherever the list has the focus.
    list_->view()->installEventFilter(this);
    connect(list_, &ListSection::currentRowChanged, this, [this](int row) {
        if (row >= 0 && state_.flag("Auto read text") && sectionShown("VT")) showRowText(row);
    });
    connect(list_, &ListSection::saveEntry, this,
            [this](const QString& entry, const QString& value) { save(entry.toStdString(), value.toStdString()); });

    for (QSplitter* s : {outer_, lower_, left_}) {
        connect(s, &QSplitter::splitterMoved, this, [this] {
            if (!applying_) saveSizes();
        });
        // A bar takes the focus by a click or Tab, and the arrow keys move it.
        QSplitterHandle* handle = s->handle(1);
        handle->setFocusPolicy(Qt::StrongFocus);
        handle->installEventFilter(this);
    }
}

bool FileListWindow::loadFrom(const std::string& windowSection) {
    WindowState loaded;
    if (!store_.load(windowSection, loaded)) return false;
    state_ = std::move(loaded);
    applyState();
    return true;
}

void FileListWindow::adopt(WindowState state) {
    state_ = std::move(state);
    applyState();
}

void FileListWindow::save(std::string_view entry, std::string value) { store_.put(state_, entry, std::move(value)); }

void FileListWindow::applyState() {
    applying_ = true;
    text_->setVisible(state_.flag("Show Text on listhtm"));
    tree_->setVisible(state_.flag("Show Tree on listhtm"));
    topList_->setVisible(state_.flag("Show Top List on Listhtm"));
    left_->setVisible(tree_->isVisibleTo(left_) || topList_->isVisibleTo(left_));
    list_->applyWindow(state_);
    applySizes();
    applying_ = false;
    syncTree();
    emit captionChanged(caption());
}

void FileListWindow::syncTree() {
    const bool was = applying_;
    applying_ = true;
    const std::string spec = state_.value("Last Dir");
    tree_->setMultiDirs(state_.flag("Multi Dirs"));
    if (state_.flag("Multi Dirs")) {
        QStringList marked;
        for (const std::string& d : listSpecDirectories(spec)) marked << fromStd(expandHome(d));
        tree_->setMarkedDirs(marked);
    } else {
        const auto dirs = splitItems(spec);
        if (!dirs.empty() && !dirs.front().empty()) tree_->showDirectory(fromStd(expandHome(dirs.front())));
    }
    applying_ = was;
}

void FileListWindow::applySizes() {
    const bool was = applying_;
    applying_ = true;
    const int h = std::max(outer_->height(), 1);
    const int textH = std::min(toPixels(textFrameHeight()), h);
    outer_->setSizes({textH, std::max(h - textH, 1)});
    const int w = std::max(lower_->width(), 1);
    const int dirW = std::min(toPixels(listDirWidth()), w);
    lower_->setSizes({dirW, std::max(w - dirW, 1)});
    const int lh = std::max(left_->height(), 1);
    const int topH = std::min(toPixels(topListHeight()), lh);
    left_->setSizes({topH, std::max(lh - topH, 1)});
    applying_ = was;
}

void FileListWindow::saveSizes() {
    const auto outer = outer_->sizes();
    if (text_->isVisible() && outer.size() == 2) setTextFrameHeight(toTwips(outer[0]));
    const auto lower = lower_->sizes();
    if (left_->isVisible() && lower.size() == 2) setListDirWidth(toTwips(lower[0]));
    const auto left = left_->sizes();
    if (topList_->isVisible() && tree_->isVisible() && left.size() == 2) setTopListHeight(toTwips(left[0]));
}

int FileListWindow::textFrameHeight() const { return static_cast<int>(state_.number("Text Frame height", 2500)); }
int FileListWindow::listDirWidth() const { return static_cast<int>(state_.number("List Dir Width", 3000)); }
int FileListWindow::topListHeight() const { return static_cast<int>(state_.number("Top List height", 1800)); }

void FileListWindow::setTextFrameHeight(int twips) {
    if (twips == textFrameHeight() && state_.has("Text Frame height")) return;
    save("Text Frame height", std::to_string(twips));
    if (!applying_) applySizes();
}
void FileListWindow::setListDirWidth(int twips) {
    if (twips == listDirWidth() && state_.has("List Dir Width")) return;
    save("List Dir Width", std::to_string(twips));
    if (!applying_) applySizes();
}
void FileListWindow::setTopListHeight(int twips) {
    if (twips == topListHeight() && state_.has("Top List height")) return;
    save("Top List height", std::to_string(twips));
    if (!applying_) applySizes();
}

namespace {
std::string_view sectionEntry(std::string_view key) {
    if (key == "VT") return "Show Text on listhtm";
    if (key == "VR") return "Show Tree on listhtm";
    return "Show Top List on Listhtm";
}
}  // namespace

bool FileListWindow::sectionShown(std::string_view key) const { return state_.flag(sectionEntry(key)); }

void FileListWindow::setSectionShown(std::string_view key, bool on) {
    save(sectionEntry(key), on ? "-1" : "0");
    applyState();
}

QString FileListWindow::caption() const {
    QString list = listText_;
    if (list.isEmpty()) {
        QStringList parts;
        for (const std::string& d : splitItems(state_.value("Last Dir"))) parts << fromStd(d);
        list = parts.join(" | ");
    }
    const QString text = fromStd(WindowCaption(state_, app_.ini(), list.toStdString()));
    return text.trimmed().isEmpty() ? QStringLiteral("File List") : text;
}

void FileListWindow::refresh() {
    syncTree();
    RefreshSpec spec = makeRefreshSpec(state_, app_.ini());
    errors_.clear();
    for (const std::string& p : spec.problems) errors_ << fromStd(p);
    directories_.clear();
    for (const std::string& d : splitItems(spec.job.listSpec)) directories_ << fromStd(d);
    progress_ = QStringLiteral("Reading ...");
    emit statusChanged();
    list_->refresh(std::move(spec), state_);
}

void FileListWindow::stop() { list_->stop(); }
bool FileListWindow::refreshing() const { return list_->refreshing(); }

void FileListWindow::onRefreshFinished(const ListTotals& totals) {
    listText_ = fromStd(totals.caption);
    QString line = QStringLiteral("%1 files listed").arg(totals.filesListed);
    if (!totals.complete) line += QStringLiteral(" (incomplete)");
    if (!totals.message.empty()) line += QStringLiteral(" -") + fromStd(totals.message);
    progress_ = line;
    addResult(line);
    emit captionChanged(caption());
}

void FileListWindow::toggleKey(std::string_view key) {
    if (key == "LM") {
        MultiDirsState now;
        now.multiDirs = state_.flag("Multi Dirs");
        now.listSelected = state_.menu("LS").checked;
        now.autoRefresh = state_.flag("Read Files");
        now.listSpec = state_.value("Last Dir");
        QString dir = tree_->currentDirectory();
        const MultiDirsToggle next = ToggleMultiDirs(now, tree_->hasFocus(), dir.toStdString());
        save("Multi Dirs", next.state.multiDirs ? "-1" : "0");
        save("Read Files", next.state.autoRefresh ? "-1" : "0");
        MnuState ls = state_.menu("LS");
        ls.checked = next.state.listSelected;
        state_.setMenu("LS", ls);
        if (next.listSpecChanged) save("Last Dir", next.state.listSpec);
        applyState();
        return;
    }
    const bool on = !state_.menu(key).checked;
    std::string keyAndDigit(key);
    keyAndDigit += '1';
    store_.putKey(state_, keyAndDigit, on ? "-1" : "0");
    applyState();
}

void FileListWindow::editListSpec(const QString& path, bool add) {
    std::string spec = state_.value("Last Dir");
    const std::string entry = path.toStdString();
    const ListSpecChange change = add ? AddToListSpec(spec, entry) : RemoveDirectoryFromListSpec(spec, entry);
    if (!change.changed) {
        if (!change.prompt.empty()) MBOk(app_.host(), change.prompt);
        return;
    }
    save("Last Dir", spec);
    if (!change.status.empty()) addResult(fromStd(change.status));
    applyState();
}

BarGeometry FileListWindow::barGeometry() const {
    BarGeometry g;
    g.innerWidth = toTwips(width());
    g.innerHeight = toTwips(height());
    g.dirFilesBarWidth = toTwips(lower_->handleWidth());
    g.textBarHeight = toTwips(outer_->handleWidth());
    g.topListBarHeight = toTwips(left_->handleWidth());
    g.textFrameHeight = text_->isVisible() ? textFrameHeight() : 0;
    return g;
}

int FileListWindow::barSize(Bar bar) const {
    switch (bar) {
        case Bar::TextLists: return textFrameHeight();
        case Bar::DirFiles: return listDirWidth();
        case Bar::TopListDirList: return topListHeight();
    }
    return 0;
}

void FileListWindow::setBarSize(Bar bar, int twips) {
    twips = clampBar(bar, twips, barGeometry());
    switch (bar) {
        case Bar::TextLists: setTextFrameHeight(twips); break;
        case Bar::DirFiles: setListDirWidth(twips); break;
        case Bar::TopListDirList: setTopListHeight(twips); break;
    }
}

void FileListWindow::toggleBar(Bar bar) {
    const std::string entry = app_.ini().mode(kMissingEmpty).get("Main", toggleEntryOf(bar));
    setBarSize(bar, ToggleBar(barSize(bar), entry, barTotal(bar, barGeometry())));
}

void FileListWindow::saveTogglePosition(Bar bar, int which) {
    IniStore& ini = app_.ini();
    const std::string entry = ini.mode(kMissingEmpty).get("Main", toggleEntryOf(bar));
    const auto updated = SaveTogglePosition(entry, barSize(bar), barTotal(bar, barGeometry()), which);
    if (updated) ini.put("Main", toggleEntryOf(bar), *updated);
}

void FileListWindow::moveBarByPercent(Bar bar, int direction) {
    const int change = app_.ini().mode(kMissingEmpty).getInt("Main", "% change");
    setBarSize(bar, percentBarMove(bar, barSize(bar), change, direction, barGeometry()));
}

void FileListWindow::changeWindowType() {
    const WindowTypeChange change = ChangeWindowType(state_, store_, app_.host());
    QString line;
    for (const std::string& piece : change.status) line += fromStd(piece);
    if (!line.isEmpty()) addResult(line);
    applyState();
}

ListSelection FileListWindow::listSelection() const {
    ListSelection s;
    s.listSpec = state_.value("Last Dir");
    std::string type = state_.value("Last FileType");
    s.defaultType = type.empty() ? std::string(1, '*') : std::move(type);
    s.includeSubdirs = state_.flag("Sub Dirs");
    s.multiDirs = state_.flag("Multi Dirs");
    s.autoRefresh = state_.flag("Read Files");
    s.showHidden = state_.flag("Include system");
    s.showSystem = state_.flag("Include Hidden");
    s.showDirectories = state_.flag("List Dirs");
    return s;
}

void FileListWindow::applySelection(const ListSelection& s) {
    auto flagText = [](bool on) { return std::string(on ? "-1" : "0"); };
    save("Last Dir", s.listSpec);
    save("Last FileType", s.defaultType);
    save("Sub Dirs", flagText(s.includeSubdirs));
    save("Multi Dirs", flagText(s.multiDirs));
    save("Read Files", flagText(s.autoRefresh));
    save("Include system", flagText(s.showHidden));
    save("Include Hidden", flagText(s.showSystem));
    save("List Dirs", flagText(s.showDirectories));
    applyState();
}

void FileListWindow::selectDirectories() {
    auto* dialog = new SelectDirDialog(listSelection(), app_.host(), app_.ini(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &SelectDirDialog::applied, this, [this](const ListSelection& s) {
        if (s.newWindow) {
            emit newWindowWanted(s);
            return;
        }
        applySelection(s);
        refresh();
    });
    dialog->open();
}

void FileListWindow::selectFileTypes() {
    auto* dialog = new FileTypesDialog(listSelection(), app_.host(), app_.ini(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &FileTypesDialog::applied, this, [this, dialog](const ListSelection& s) {
        applySelection(s);
        if (!dialog->statusText().isEmpty()) addResult(dialog->statusText());
        refresh();
    });
    dialog->open();
}

void FileListWindow::focusSection(std::string_view which) {
    if (which == "VT") {
        if (!sectionShown("VT")) setSectionShown("VT", true);
        text_->setFocus();
    } else if (which == "VR") {
        if (!sectionShown("VR")) setSectionShown("VR", true);
        tree_->setFocus();
    } else {
        list_->view()->setFocus();
    }
}

void FileListWindow::sortBy(const std::vector<int>& colTypes) {
    std::vector<std::string> parts;
    for (int t : colTypes) parts.push_back(std::to_string(t));
    save("Sort col Index", joinList(parts));
    bus_->queue("Dosort", kBusUniqueFront);
}

void FileListWindow::sortAgain() { bus_->queue("Dosort", kBusUniqueFront); }

void FileListWindow::runBusCommand(const std::string& caption, const std::string&) {
    if (caption == "Dosort") {
        // A list being made is sorted at its end.
        if (refreshing()) return;
        list_->applyWindow(state_);
        list_->sortBy(list_->sortOrder());
    }
}

QString FileListWindow::sortDescription() const {
    QStringList captions;
    for (int t : list_->sortOrder()) captions << fromStd(std::string(colTypeCaption(t)));
    return captions.join(' ');
}

void FileListWindow::fixColumns(int change) {
    ListGridView* view = list_->view();
    int count = view->fixedColumns();
    if (change == 0)
        count = std::max(0, view->currentIndex().column() + 1);
    else
        count = std::max(0, count + change);
    count = std::min(count, std::max(0, list_->model()->columnCount() - 1));
    view->setFixedColumns(count);
    save("Fixed Cols", std::to_string(count));
}

void FileListWindow::addResult(const QString& line) {
    results_ << line;
    while (results_.size() > 200) results_.removeFirst();
    emit statusChanged();
}

QString FileListWindow::selectedText() const { return list_->selectedText(); }

bool FileListWindow::showText(const QString& path) {
    if (path.isEmpty() || !QFileInfo(path).isFile()) return false;
    const TextKind kind = QString::fromStdString(state_.value("Show file as (auto read/alt-up+dn)"))
                                  .startsWith("Plain", Qt::CaseInsensitive)
                              ? TextKind::Plain
                              : TextKind::Raw;
    const ShowFileResult r = text_->showFile(path, kind);
    if (r.shown && state_.value("Last Txt PAFN") != path.toStdString()) save("Last Txt PAFN", path.toStdString());
    if (!r.status.empty()) {
        progress_ = fromStd(r.status);
        emit statusChanged();
    }
    return r.shown;
}

bool FileListWindow::showRowText(int row) {
    const auto& rows = list_->model()->table().rows();
    if (row < 0 || static_cast<std::size_t>(row) >= rows.size()) return false;
    const Row& r = rows[static_cast<std::size_t>(row)];
    if (r.isDirectory) return false;
    return showText(fromStd(r.path));
}

void FileListWindow::showCurrentFile(int kind) {
    const int row = list_->view()->currentIndex().isValid() ? list_->view()->currentIndex().row() : -1;
    const auto& rows = list_->model()->table().rows();
    if (row < 0 || static_cast<std::size_t>(row) >= rows.size()) return;
    const Row& r = rows[static_cast<std::size_t>(row)];
    const QString path = fromStd(r.path);
    if (r.isDirectory) {
        MBOk(app_.host(), "File for current line in file list is a directory. Show not done. File Name >>" + r.path + "<<");
        return;
    }
    const auto showKind = static_cast<ShowKind>(kind);
    if (showKind == ShowKind::Hex) {
        showHexDumpOfFile(path, app_.host());
        return;
    }
    ShowDataWindow* popup = ShowDataWindow::instance(ShowDataWindow::Role::ShowData, app_.textCache(), app_.host(),
                                                     app_.ini(), window());
    popup->setOwner(this, this);
    popup->showFile(path, showKind, QFileInfo(path).fileName());
}

void FileListWindow::showCurrentCell() {
    const QModelIndex index = list_->view()->currentIndex();
    if (!index.isValid()) return;
    const QString text = list_->model()->data(index).toString();
    const QString title = list_->model()->headerData(index.column(), Qt::Horizontal).toString();
    ShowDataWindow* popup = ShowDataWindow::instance(ShowDataWindow::Role::ShowCell, app_.textCache(), app_.host(),
                                                     app_.ini(), window());
    popup->setOwner(this, this);
    popup->showCell(text, title);
}

void FileListWindow::showTextInfo() {
    if (ShowDataWindow* popup = ShowDataWindow::openPopup(ShowDataWindow::Role::ShowData);
        popup && popup->isActiveWindow()) {
        popup->showInfo();
        return;
    }
    showInfoForView(*text_, app_.host(), app_.ini());
}

void FileListWindow::popupTextShown(const QString& path) {
    if (state_.value("Last Txt PAFN") != path.toStdString()) save("Last Txt PAFN", path.toStdString());
}

bool FileListWindow::popupKey(QKeyEvent* event) {
    if (event->key() == Qt::Key_F5 && event->modifiers() == Qt::NoModifier) {
        refresh();
        return true;
    }
    return false;
}

void FileListWindow::stepFileRow(int direction) {
    const auto& rows = list_->model()->table().rows();
    ListGridView* view = list_->view();
    int row = view->currentIndex().isValid() ? view->currentIndex().row() : -1;
    for (row += direction; row >= 0 && static_cast<std::size_t>(row) < rows.size(); row += direction) {
        const Row& r = rows[static_cast<std::size_t>(row)];
        if (r.isDirectory || r.hidden) continue;
        view->setGreen(row, std::max(0, view->currentIndex().column()));
        if (!state_.flag("Auto read text") || !sectionShown("VT")) showRowText(row);
        return;
    }
}

void FileListWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F5 && event->modifiers() == Qt::NoModifier) {
        refresh();
        return;
    }
    if ((event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) && event->modifiers() == Qt::AltModifier) {
        stepFileRow(event->key() == Qt::Key_Up ? -1 : 1);
        return;
    }
    if (event->key() == Qt::Key_Escape && refreshing()) {
        stop();
        return;
    }
    QWidget::keyPressEvent(event);
}

bool FileListWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (auto* handle = qobject_cast<QSplitterHandle*>(watched)) {
            const Bar bar = handle->splitter() == outer_ ? Bar::TextLists
                            : handle->splitter() == lower_ ? Bar::DirFiles
                                                           : Bar::TopListDirList;
            int code = 0;
            switch (key->key()) {
                case Qt::Key_Left: code = 37; break;
                case Qt::Key_Up: code = 38; break;
                case Qt::Key_Right: code = 39; break;
                case Qt::Key_Down: code = 40; break;
                default: break;
            }
            const bool shift = key->modifiers() & Qt::ShiftModifier;
            const bool ctrl = key->modifiers() & Qt::ControlModifier;
            if (code) {
                if (auto size = keyedBarMove(bar, code, shift, ctrl, barSize(bar), barGeometry())) setBarSize(bar, *size);
                return true;
            }
        }
        if ((key->key() == Qt::Key_Up || key->key() == Qt::Key_Down) && key->modifiers() == Qt::AltModifier) {
            stepFileRow(key->key() == Qt::Key_Up ? -1 : 1);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void FileListWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    applySizes();
}

void FileListWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    // A window shrunk below its Text frame keeps the frame 105 twips short
    // of its height; growing it again does not bring the old height back.
    const int inner = toTwips(height());
    if (inner > 0 && !applying_ && isVisible() && !isMinimized() && textFrameHeight() > inner - kTextFrameMargin)
        save("Text Frame height", std::to_string(std::max(0, inner - kTextFrameMargin)));
    applySizes();
}

void FileListWindow::closeEvent(QCloseEvent* event) {
    list_->stop();
    store_.windowClosed(section(), !gMainClosing);
    event->accept();
}

}  // namespace tav::ui

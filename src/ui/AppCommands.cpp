#include "ui/AppCommands.h"

#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <array>
#include <cmath>

#include "dialogs/MessageShortcuts.h"
#include "filelist/ColumnTypes.h"
#include "frame/BarLayout.h"
#include "frame/WindowTypes.h"
#include "ui/AppContext.h"
#include "ui/FileListWindow.h"
#include "ui/ListGridModel.h"
#include "ui/ListGridView.h"
#include "ui/ListSection.h"
#include "ui/MainWindow.h"
#include "ui/MenuBarBuilder.h"
#include "ui/SavedSetCommands.h"
#include "ui/ShowDataWindow.h"

namespace tav::ui {

namespace {

struct CheckedKey {
    std::string_view code, key;
};
// Menu items that show a window state as their tick.
constexpr std::array<CheckedKey, 22> kCheckedKeys{{
    {"VT", "VT"},  {"VR", "VR"},  {"VL", "VL"},  {"LM", "LM"},  {"EQM", "LM"}, {"EQS", "LD"},
    {"EQA", "OF"}, {"EQR", "OP"}, {"EQB", "OC"}, {"EQU", "OX"}, {"EQV", "OR"}, {"VS", "VS"},
    {"VC", "VC"},  {"VN", "VN"},  {"WBB", "wB"}, {"WBS", "wS"}, {"WBD", "wL"}, {"WBE", "wE"},
    {"WBP", "wP"}, {"WBC", "wC"}, {"WBY", "wY"}, {"WBU", "wU"},
}};

// The orders of the View menu's sort items.
const std::vector<int> kSortBy[] = {{col::FilePath}, {col::FileName}, {col::Type}, {col::Size}};
const std::vector<int> kSortByTwo[] = {{col::Date, col::Time},   {col::FilePath, col::Type}, {col::FilePath, col::Size},
                                       {col::FilePath, col::Date}, {col::Type, col::Size}};

Bar barOfToggleCode(std::string_view code) {
    if (code == "WTT" || code == "WTE" || code == "WTX") return Bar::TextLists;
    if (code == "WTR" || code == "WTA" || code == "WTV") return Bar::DirFiles;
    return Bar::TopListDirList;
}

}  // namespace

std::string_view checkedKeyOfMenuCode(std::string_view code) {
    for (const CheckedKey& k : kCheckedKeys)
        if (k.code == code) return k.key;
    return {};
}

AppCommands::AppCommands(MainWindow& main, AppContext& app)
    : QObject(&main), main_(main), app_(app), tree_(MenuTree::standard()), dispatch_(tree_, app.host()) {
    dispatch_.setProvider(this);
    builder_ = std::make_unique<MenuBarBuilder>(tree_, dispatch_);
    registerHandlers();
}

AppCommands::~AppCommands() = default;

void AppCommands::install(QMenuBar* bar) {
    builder_->build(bar);
    windowsChanged();
}

bool AppCommands::run(std::string_view code) { return dispatch_.menuClick(code); }

bool AppCommands::hasFileListWindow() const { return !main_.listWindows().isEmpty(); }

MenuItemState AppCommands::itemState(const MenuItem& item, MenuItemState own) const {
    const std::string_view key = checkedKeyOfMenuCode(item.code);
    if (key.empty()) return own;
    FileListWindow* w = main_.activeListWindow();
    if (!w) return own;
    own.checked = w->state().menu(key).checked;
    return own;
}

void AppCommands::windowsChanged() {
    const QList<FileListWindow*> windows = main_.listWindows();
    FileListWindow* active = main_.activeListWindow();
    for (int i = 0; i <= 10; ++i) {
        const std::string code = "09(" + std::to_string(i) + ")";
        if (i < windows.size()) {
            const QString number = i == 9 ? QStringLiteral("1&0") : QStringLiteral("&%1").arg(i + 1);
            tree_.setCaption(code, (number + " " + windows[i]->caption()).toStdString());
            tree_.setVisible(code, true);
        } else {
            tree_.setCaption(code, "");
            tree_.setVisible(code, false);
        }
    }
    (void)active;
    builder_->refresh();
}

void AppCommands::onWindow(std::string_view code, std::function<void(FileListWindow&, const MenuCall&)> body) {
    dispatch_.setHandler(code, [this, body = std::move(body)](const MenuCall& call) {
        if (FileListWindow* w = main_.activeListWindow()) body(*w, call);
    });
}

void AppCommands::registerHandlers() {
    MessageHost& host = app_.host();
    // File and Window.
    dispatch_.setHandler("FX", [this](const MenuCall&) { main_.close(); });
    dispatch_.setHandler("WW", [this](const MenuCall&) {
        main_.newWindow();
        windowsChanged();
    });
    dispatch_.setHandler("WC", [this](const MenuCall&) { main_.mdiArea()->cascadeSubWindows(); });
    dispatch_.setHandler("WH", [this](const MenuCall&) { main_.tileWindows(true); });
    dispatch_.setHandler("WV", [this](const MenuCall&) { main_.tileWindows(false); });
    dispatch_.setHandler("WD", [this](const MenuCall&) { main_.fillActive(true, false); });
    dispatch_.setHandler("WE", [this](const MenuCall&) { main_.fillActive(false, true); });
    dispatch_.setHandler("WF", [this](const MenuCall&) { main_.fillActive(true, true); });
    dispatch_.setHandler("09", [this](const MenuCall& call) {
        const QList<FileListWindow*> windows = main_.listWindows();
        if (call.arrayIndex < 0 || call.arrayIndex >= windows.size()) return;
        main_.mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(windows[call.arrayIndex]->parentWidget()));
    });
    onWindow("WG", [this](FileListWindow& w, const MenuCall&) {
        w.changeWindowType();
        windowsChanged();
    });
    for (std::string_view code : {"WTT", "WTR", "WTL"})
        onWindow(code, [code](FileListWindow& w, const MenuCall&) { w.toggleBar(barOfToggleCode(code)); });
    for (std::string_view code : {"WTE", "WTA", "WTI"})
        onWindow(code, [code](FileListWindow& w, const MenuCall&) { w.saveTogglePosition(barOfToggleCode(code), 1); });
    for (std::string_view code : {"WTX", "WTV", "WTS"})
        onWindow(code, [code](FileListWindow& w, const MenuCall&) { w.saveTogglePosition(barOfToggleCode(code), 2); });
    for (std::string_view code : {"WBB", "WBS", "WBD", "WBE", "WBP", "WBC", "WBY", "WBU"})
        onWindow(code, [this, code](FileListWindow& w, const MenuCall&) {
            w.toggleKey(checkedKeyOfMenuCode(code));
            main_.refreshStatus();
        });
    dispatch_.setHandler("WBR", [this](const MenuCall&) { main_.showStatusList(); });

    // Edit.
    onWindow("EE", [](FileListWindow& w, const MenuCall&) { w.refresh(); });
    for (std::string_view code : {"EQM", "LM", "EQS", "EQA", "EQR", "EQB", "EQU", "EQV"})
        onWindow(code, [code](FileListWindow& w, const MenuCall&) { w.toggleKey(checkedKeyOfMenuCode(code)); });
    onWindow("Ea", [](FileListWindow& w, const MenuCall&) { w.list()->view()->selectAllBlue(); });
    onWindow("ID", [](FileListWindow& w, const MenuCall&) { w.selectDirectories(); });
    onWindow("LR", [](FileListWindow& w, const MenuCall&) { w.selectDirectories(); });
    onWindow("IB", [](FileListWindow& w, const MenuCall&) { w.selectFileTypes(); });
    onWindow("LB", [](FileListWindow& w, const MenuCall&) { w.selectFileTypes(); });
    onWindow("IT", [](FileListWindow& w, const MenuCall&) { w.focusSection("VT"); });
    onWindow("IR", [](FileListWindow& w, const MenuCall&) { w.focusSection("VR"); });
    onWindow("II", [](FileListWindow& w, const MenuCall&) { w.focusSection("list"); });

    // View.
    for (std::string_view code : {"VT", "VR", "VL"})
        onWindow(code, [code](FileListWindow& w, const MenuCall&) { w.setSectionShown(code, !w.sectionShown(code)); });
    onWindow("VSORT", [](FileListWindow& w, const MenuCall& call) {
        if (call.arrayIndex >= 0 && call.arrayIndex < 4) w.sortBy(kSortBy[call.arrayIndex]);
    });
    onWindow("VYSORT", [](FileListWindow& w, const MenuCall& call) {
        if (call.arrayIndex >= 0 && call.arrayIndex < 5) w.sortBy(kSortByTwo[call.arrayIndex]);
    });
    onWindow("VN", [](FileListWindow& w, const MenuCall&) { w.toggleKey("VN"); });
    onWindow("VS", [](FileListWindow& w, const MenuCall&) {
        w.toggleKey("VS");
        w.sortAgain();
    });
    onWindow("VC", [](FileListWindow& w, const MenuCall&) {
        w.toggleKey("VC");
        w.sortAgain();
    });
    onWindow("VM", [](FileListWindow& w, const MenuCall&) { w.list()->model()->renumber(); });
    onWindow("VQ", [&host](FileListWindow& w, const MenuCall&) {
        MBOk(host, "Sort File List by: " + w.sortDescription().toStdString());
    });

    // Show.
    onWindow("ON", [](FileListWindow& w, const MenuCall&) { w.showCurrentFile(static_cast<int>(ShowKind::Plain)); });
    onWindow("OU", [](FileListWindow& w, const MenuCall&) { w.showCurrentFile(static_cast<int>(ShowKind::Raw)); });
    onWindow("OM", [](FileListWindow& w, const MenuCall&) { w.showCurrentFile(static_cast<int>(ShowKind::Hex)); });
    onWindow("OE", [](FileListWindow& w, const MenuCall&) { w.showCurrentCell(); });
    onWindow("OB", [](FileListWindow& w, const MenuCall&) { w.showTextInfo(); });

    // Select.
    onWindow("LU", [](FileListWindow& w, const MenuCall&) { w.list()->view()->showAllRows(); });
    onWindow("LEC", [](FileListWindow& w, const MenuCall&) { w.fixColumns(0); });
    onWindow("LEA", [](FileListWindow& w, const MenuCall&) { w.fixColumns(1); });
    onWindow("LER", [](FileListWindow& w, const MenuCall&) { w.fixColumns(-1); });

    installSavedSetCommands(dispatch_, main_, app_);

    // Help.
    dispatch_.setHandler("HA", [&host](const MenuCall&) {
        MBOk(host, (QApplication::applicationName() + " " + QApplication::applicationVersion()).toStdString() +
                       "\rA keyboard-driven file manager and file analyser.");
    });
}

}  // namespace tav::ui

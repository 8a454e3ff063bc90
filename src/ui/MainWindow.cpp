#include "ui/MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QGuiApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QTime>
#include <QTimer>
#include <algorithm>

#include "core/ListText.h"
#include "dialogs/MessageShortcuts.h"
#include "settings/IniNumbers.h"
#include "settings/IniStore.h"
#include "ui/AppCommands.h"
#include "ui/AppContext.h"
#include "ui/BusTimer.h"
#include "ui/ListSection.h"
#include "ui/MenuBarBuilder.h"
#include "ui/FileListWindow.h"
#include "ui/StatusPieces.h"
#include "ui/TextSectionView.h"

namespace tav::ui {

namespace {
// Places are stored in twips, 15 to a pixel at the usual 96 dots an inch.
constexpr int kTwipsPerPixel = 15;

double secondsSinceMidnight() { return QTime::currentTime().msecsSinceStartOfDay() / 1000.0; }
}  // namespace

MainWindow::MainWindow(AppContext& app, QWidget* parent)
    : QMainWindow(parent), app_(app), store_(app.ini()), mdi_(new QMdiArea(this)), status_(new StatusPieces) {
    setObjectName("HTMLanalform");
    setWindowTitle("Tavelo");
    mdi_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    mdi_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setCentralWidget(mdi_);
    statusBar()->addWidget(status_, 1);
    statusBar()->setSizeGripEnabled(true);
    connect(mdi_, &QMdiArea::subWindowActivated, this, [this] { updateStatus(); });
    connect(status_, &StatusPieces::stopClicked, this, [this] {
        if (FileListWindow* w = activeListWindow()) w->stop();
    });
    connect(status_, &StatusPieces::startClicked, this, [this] {
        if (FileListWindow* w = activeListWindow()) w->refresh();
    });
    bus_ = new BusTimer([this](const BusCommand& c) { runBusCommand(c); }, this);
    buildMenus();
    restorePlace();
    IniStore& ini = app_.ini();
    mainTimer_ = new QTimer(this);
    const int interval = ini.mode(kMissingEmpty).getInt("Timeouts", "Main timer interval");
    mainTimer_->setInterval(interval > 0 ? interval : 200);
    focusEvery_ = std::max(1, ini.mode(kMissingEmpty).getInt("Timeouts", "Setfocus back to LHForm timer interval (multiple)"));
    connect(mainTimer_, &QTimer::timeout, this, &MainWindow::mainTick);
    mainTimer_->start();
    FileListWindow::setMainClosing(false);
}

MainWindow::~MainWindow() {
    // The children go after this body: nothing they signal may reach the
    // half-destroyed window.
    closing_ = true;
    disconnect(mdi_, nullptr, this, nullptr);
    for (FileListWindow* w : listWindows()) disconnect(w, nullptr, this, nullptr);
}

void MainWindow::buildMenus() {
    commands_ = new AppCommands(*this, app_);
    commands_->install(menuBar());
    commands_->builder()->setMenusShutHandler([this] { bus_->queue("Enable Menus", kBusUniqueFront); });
    connect(mdi_, &QMdiArea::subWindowActivated, this, [this] {
        if (!closing_) commands_->windowsChanged();
    });
}

void MainWindow::tileWindows(bool horizontal) {
    const QList<QMdiSubWindow*> subs = mdi_->subWindowList(QMdiArea::StackingOrder);
    QList<QMdiSubWindow*> shown;
    for (QMdiSubWindow* sub : subs)
        if (!sub->isMinimized() && sub->isVisible()) shown << sub;
    if (shown.isEmpty()) return;
    const QRect area = mdi_->viewport()->rect();
    const int n = static_cast<int>(shown.size());
    for (int i = 0; i < n; ++i) {
        shown[i]->showNormal();
        if (horizontal) {
            const int h = area.height() / n;
            shown[i]->setGeometry(0, i * h, area.width(), i == n - 1 ? area.height() - i * h : h);
        } else {
            const int w = area.width() / n;
            shown[i]->setGeometry(i * w, 0, i == n - 1 ? area.width() - i * w : w, area.height());
        }
    }
}

void MainWindow::showStatusList() { status_->showList(); }

QMdiSubWindow* MainWindow::addListWindow(FileListWindow* window) {
    QMdiSubWindow* sub = mdi_->addSubWindow(window);
    sub->setAttribute(Qt::WA_DeleteOnClose);
    sub->setWindowTitle(window->caption());
    connect(window, &FileListWindow::captionChanged, sub, &QMdiSubWindow::setWindowTitle);
    connect(window, &FileListWindow::statusChanged, this, [this, window] {
        if (window == activeListWindow()) updateStatus();
    });
    connect(window, &FileListWindow::captionChanged, this, [this] {
        if (!closing_ && commands_) commands_->windowsChanged();
    });
    connect(window, &FileListWindow::newWindowWanted, this, [this](const ListSelection& selection) {
        if (FileListWindow* w = newWindow()) {
            w->applySelection(selection);
            w->refresh();
        }
    });
    const QSize area = mdi_->viewport()->size();
    sub->resize(std::max(area.width() * 3 / 4, 480), std::max(area.height() * 3 / 4, 320));
    sub->show();
    return sub;
}

FileListWindow* MainWindow::makeWindow(const std::string& section) {
    auto* window = new FileListWindow(app_, store_);
    if (!window->loadFrom(section)) {
        delete window;
        return nullptr;
    }
    addListWindow(window);
    return window;
}

bool MainWindow::loadWindows() {
    const std::string factory = app_.ini().qualify("param/sucurrwin.ini");
    FileListWindow* first = nullptr;
    const WindowLoadResult result = LoadFileListWindows(store_, factory, [&](const std::string& section, bool) {
        FileListWindow* w = makeWindow(section);
        if (w && !first) first = w;
        return w != nullptr;
    });
    if (result.failed) {
        closing_ = true;
        FileListWindow::setMainClosing(true);
        MBOk(app_.host(), windowLoadFailureMessage(QApplication::applicationName().toStdString()));
        return false;
    }
    store_.removeLeftovers();
    if (first) mdi_->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(first->parentWidget()));
    // The end of the start runs from the bus, once the window is up: the
    // second queued runs first.
    bus_->queue("StartUpMsgs", kBusUniqueFront);
    bus_->queue("Show PopupAnd Hide Windows BugFix ", kBusUniqueFront);
    updateStatus();
    return true;
}

void MainWindow::runBusCommand(const BusCommand& command) {
    const std::string& caption = command.caption;
    if (caption.empty()) return;
    if (auto answer = commands_->dispatch().busCommand(caption, command.tag)) return;
    if (caption == "StartUpMsgs") {
        starting_ = false;
        emit started();
    } else if (caption == "Show PopupAnd Hide Windows BugFix ") {
        // The saved state is put back and the list takes the focus.
        if (isMinimized()) {
            const int state = app_.ini().mode(kMissingEmpty).getInt("Main", "MDI WIN STATE");
            if (state == 2)
                showMaximized();
            else
                showNormal();
        }
        if (FileListWindow* w = activeListWindow()) w->list()->setFocus();
    } else if (caption == "Enable Menus") {
        commands_->builder()->enableMenus();
    }
}

void MainWindow::mainTick() {
    if (closing_) {
        mainTimer_->stop();
        return;
    }
    // `SetFocusBackToLHForm`: with the main window active and the focus on
    // none of its controls, the list of the active window takes it back.
    if (++focusCount_ < focusEvery_) return;
    focusCount_ = 0;
    if (QApplication::activeWindow() != this || QApplication::activePopupWidget()) return;
    QWidget* focus = QApplication::focusWidget();
    if (focus && focus != mdi_ && !qobject_cast<QMdiSubWindow*>(focus)) return;
    if (FileListWindow* w = activeListWindow()) w->list()->setFocus();
}

void MainWindow::showAtStart() {
    if (app_.ini().mode(kMissingEmpty).getBool("Main", "At Start Up Show MDI"))
        show();
    else
        showMinimized();
}

void MainWindow::showStartTexts(bool firstRun) {
    if (!app_.ini().mode(kMissingEmpty).getBool("Main", "Show Last Txt when start") && !firstRun) return;
    FileListWindow* active = activeListWindow();
    QList<FileListWindow*> order = listWindows();
    if (active) {
        order.removeAll(active);
        order.append(active);
    }
    for (FileListWindow* w : order) {
        if (!w->sectionShown("VT")) continue;
        QString path;
        if (firstRun && w == active)
            path = QDir(QString::fromStdString(app_.dataDir())).filePath("welcome.txt");
        else
            path = QString::fromStdString(w->state().value("Last Txt PAFN"));
        if (path.isEmpty()) continue;
        if (!w->showText(path) && !(firstRun && w == active)) w->save("Last Txt PAFN", "");
    }
}

QList<FileListWindow*> MainWindow::listWindows() const {
    QList<FileListWindow*> out;
    for (QMdiSubWindow* sub : mdi_->subWindowList(QMdiArea::CreationOrder))
        if (auto* w = qobject_cast<FileListWindow*>(sub->widget())) out << w;
    return out;
}

FileListWindow* MainWindow::activeListWindow() const {
    QMdiSubWindow* sub = mdi_->activeSubWindow();
    if (!sub) sub = mdi_->currentSubWindow();
    return sub ? qobject_cast<FileListWindow*>(sub->widget()) : nullptr;
}

FileListWindow* MainWindow::newWindow() {
    FileListWindow* active = activeListWindow();
    std::string source = active ? active->section() : store_.lastUnloaded();
    bool fromDefaults = false;
    WindowState state = store_.makeNewWindow(source, secondsSinceMidnight(), &fromDefaults);
    if (state.sections.empty()) {
        MBOk(app_.host(), "Creation of new window not possible (or was cancelled). If the problem is repeated, restart " +
                              QApplication::applicationName().toStdString());
        return nullptr;
    }
    auto* window = new FileListWindow(app_, store_);
    window->adopt(std::move(state));
    QMdiSubWindow* sub = addListWindow(window);
    mdi_->setActiveSubWindow(sub);
    if (fromDefaults)
        window->addResult("New Window created.");
    else if (active)
        window->addResult("Window created from " + active->caption());
    else
        window->addResult("Window created from last unloaded window");
    if (app_.ini().mode(kMissingEmpty).getBool("Main", "New window read files")) window->refresh();
    return window;
}

void MainWindow::fillActive(bool width, bool height) {
    QMdiSubWindow* sub = mdi_->activeSubWindow();
    if (!sub) return;
    QRect g = sub->geometry();
    const QRect area = mdi_->viewport()->rect();
    if (width) {
        g.setLeft(0);
        g.setWidth(area.width());
    }
    if (height) {
        g.setTop(0);
        g.setHeight(area.height());
    }
    sub->setGeometry(g);
}

void MainWindow::updateStatus() {
    FileListWindow* w = activeListWindow();
    if (!w) {
        status_->setLists({}, {}, {});
        status_->setProgress({});
        status_->setSelected({});
        status_->setRunning(false);
        return;
    }
    status_->setLists(w->results(), w->directories(), w->errors());
    status_->setProgress(w->progressText());
    status_->setSelected(w->selectedText());
    status_->setRunning(w->refreshing());
    const WindowState& s = w->state();
    status_->setPiecesShown(s.flag("Status Bar_BUTTONS"), s.flag("Status Bar_DDSTATUS"), s.flag("Status Bar_SELCOUNT"),
                            s.flag("Status Bar_PROGRESS"));
    statusBar()->setVisible(s.flag("Status Bar_ONOFF"));
}

void MainWindow::restorePlace() {
    IniStore& ini = app_.ini();
    auto parts = splitItems(ini.mode(kMissingNotFound).get("Main", "MDI WIN PosSize"));
    if (parts.size() >= 4) {
        int v[4];
        for (int i = 0; i < 4; ++i) v[i] = static_cast<int>(numberAtStart(parts[i]).value_or(0)) / kTwipsPerPixel;
        QRect screen = QGuiApplication::primaryScreen() ? QGuiApplication::primaryScreen()->availableGeometry()
                                                        : QRect(0, 0, 1920, 1080);
        int left = std::clamp(v[0], 0, screen.width());
        int top = std::clamp(v[1], 0, screen.height());
        if (v[2] > 100 && v[3] > 100) resize(v[2], v[3]);
        move(left, top);
    } else {
        resize(1000, 700);
    }
    const int state = ini.mode(kMissingEmpty).getInt("Main", "MDI WIN STATE");
    if (state == 2) setWindowState(Qt::WindowMaximized);
}

void MainWindow::savePlace() {
    IniStore& ini = app_.ini();
    const int state = isMaximized() ? 2 : isMinimized() ? 1 : 0;
    ini.putNumber("Main", "MDI WIN STATE", state);
    if (state != 0) return;
    QRect g = normalGeometry();
    std::vector<std::string> place = {std::to_string(g.x() * kTwipsPerPixel), std::to_string(g.y() * kTwipsPerPixel),
                                      std::to_string(g.width() * kTwipsPerPixel),
                                      std::to_string(g.height() * kTwipsPerPixel)};
    ini.put("Main", "MDI WIN PosSize", joinList(place));
}

void MainWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    if (!starting_ && !closing_ && isVisible()) savePlace();
}

void MainWindow::moveEvent(QMoveEvent* event) {
    QMainWindow::moveEvent(event);
    if (!starting_ && !closing_ && isVisible()) savePlace();
}

void MainWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (arranged_) return;
    arranged_ = true;
    // The windows of the start are placed once the area has its size: one
    // fills it, several are cascaded.
    QTimer::singleShot(0, this, [this] {
        const auto subs = mdi_->subWindowList();
        QMdiSubWindow* active = mdi_->activeSubWindow();
        if (subs.size() == 1)
            subs.front()->setGeometry(mdi_->viewport()->rect());
        else if (subs.size() > 1)
            mdi_->cascadeSubWindows();
        if (active) mdi_->setActiveSubWindow(active);
    });
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && !starting_ && !closing_)
        app_.ini().putNumber("Main", "MDI WIN STATE", isMaximized() ? 2 : isMinimized() ? 1 : 0);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    mainTimer_->stop();
    if (!closing_) savePlace();
    closing_ = true;
    // The windows closed with the main window keep their place on the list
    // of current windows, so that they come back at the next start.
    FileListWindow::setMainClosing(true);
    mdi_->closeAllSubWindows();
    event->accept();
}

void MainWindow::showTextFile(const QString& path, const QString& title) {
    auto* view = new TextSectionView(app_.textCache(), app_.host());
    QMdiSubWindow* sub = mdi_->addSubWindow(view);
    sub->setAttribute(Qt::WA_DeleteOnClose);
    sub->setWindowTitle(title);
    sub->resize(640, 420);
    sub->show();
    view->showFile(path);
    view->setFocus();
}

}  // namespace tav::ui

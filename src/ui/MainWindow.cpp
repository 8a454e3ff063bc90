#include "ui/MainWindow.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>
#include <algorithm>

#include "core/ListText.h"
#include "settings/IniNumbers.h"
#include "ui/AppContext.h"
#include "ui/TextSectionView.h"

namespace tav::ui {

namespace {
// Places are stored in twips, 15 to a pixel at the usual 96 dots an inch.
constexpr int kTwipsPerPixel = 15;
}  // namespace

MainWindow::MainWindow(AppContext& app, QWidget* parent) : QMainWindow(parent), app_(app), mdi_(new QMdiArea(this)) {
    setObjectName("HTMLanalform");
    setWindowTitle("Tavelo");
    mdi_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    mdi_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setCentralWidget(mdi_);
    statusBar()->showMessage(QString::fromStdString("Data directory: " + app_.dataDir()));
    buildMenus();
    restorePlace();
    QTimer::singleShot(0, this, [this] { starting_ = false; });
}

void MainWindow::buildMenus() {
    QMenu* file = menuBar()->addMenu("&File");
    QAction* exit = file->addAction("E&xit");
    exit->setShortcut(QKeySequence(Qt::ALT | Qt::Key_F4));
    connect(exit, &QAction::triggered, this, &QWidget::close);
    QMenu* window = menuBar()->addMenu("&Window");
    connect(window->addAction("&Cascade"), &QAction::triggered, mdi_, &QMdiArea::cascadeSubWindows);
    connect(window->addAction("&Tile"), &QAction::triggered, mdi_, &QMdiArea::tileSubWindows);
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

void MainWindow::closeEvent(QCloseEvent* event) {
    closing_ = true;
    savePlace();
    event->accept();
}

void MainWindow::showTextFile(const QString& path, const QString& title) {
    auto* view = new TextSectionView(app_.textCache(), app_.host());
    QMdiSubWindow* sub = mdi_->addSubWindow(view);
    sub->setWindowTitle(title);
    sub->resize(640, 420);
    sub->show();
    view->showFile(path);
    view->setFocus();
}

}  // namespace tav::ui

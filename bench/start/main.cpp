// Start-up: the time from the start of the engine to the first File List
// window on screen, with ten saved windows to bring back, against a bare Qt
// main window shown in the same process. Target: under 0.5 s.
//
//   bench_start [--runs N]
#include <QApplication>
#include <QElapsedTimer>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "frame/WindowStore.h"
#include "settings/IniStore.h"
#include "ui/AppContext.h"
#include "ui/FileListWindow.h"
#include "ui/MainWindow.h"

namespace fs = std::filesystem;
using namespace tav;

namespace {

// A data directory whose current windows list holds ten windows.
std::string makeDataDir(const fs::path& root) {
    const std::string data = (root / "data").string();
    ui::AppContext context;
    if (!context.open(data, "")) return {};
    WindowStore store(context.ini());
    for (int i = 0; i < 9; ++i) store.makeNewWindow("--W 43200", 40000.0 + i);
    context.ini().flush();
    return data;
}

double startOnce(const std::string& data, int* windows) {
    QElapsedTimer clock;
    clock.start();
    ui::AppContext context;
    if (!context.open(data, "")) return -1;
    ui::MainWindow window(context);
    context.host().setParent(&window);
    if (!window.loadWindows()) return -1;
    window.show();
    QApplication::processEvents();
    const double ms = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    *windows = static_cast<int>(window.listWindows().size());
    ui::FileListWindow::setMainClosing(true);
    return ms;
}

double bareQtOnce() {
    QElapsedTimer clock;
    clock.start();
    QMainWindow window;
    auto* mdi = new QMdiArea(&window);
    window.setCentralWidget(mdi);
    mdi->addSubWindow(new QWidget)->show();
    window.resize(1000, 700);
    window.show();
    QApplication::processEvents();
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

double median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v.empty() ? 0 : v[v.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    int runs = 5;
    for (int i = 1; i + 1 < argc; ++i)
        if (std::string(argv[i]) == "--runs") runs = std::max(1, std::atoi(argv[i + 1]));

    const fs::path root = fs::temp_directory_path() / ("tavelo-bench-start-" + std::to_string(QCoreApplication::applicationPid()));
    fs::create_directories(root);
    const std::string data = makeDataDir(root);
    if (data.empty()) {
        std::fprintf(stderr, "could not make the data directory\n");
        return 1;
    }
    std::vector<double> ours, bare;
    int windows = 0;
    for (int i = 0; i < runs; ++i) {
        bare.push_back(bareQtOnce());
        ours.push_back(startOnce(data, &windows));
    }
    std::error_code ec;
    fs::remove_all(root, ec);
    const double t = median(ours), b = median(bare);
    std::printf("start with %d saved windows: %.1f ms (median of %d; target 500 ms)\n", windows, t, runs);
    std::printf("bare Qt main window:        %.1f ms\n", b);
    std::printf("ratio to a bare Qt window:  %.2fx\n", b > 0 ? t / b : 0.0);
    return t < 500 ? 0 : 1;
}

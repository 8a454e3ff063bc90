#pragma once
// For tests of the desktop program: a program run, the engine on a data
// directory and the main window with the windows of the last run, shown at
// a fixed size. `window` is null when the start failed.
#include <memory>
#include <string>

#include "ui/AppContext.h"
#include "ui/FileListWindow.h"
#include "ui/MainWindow.h"

namespace tavtest {

struct AppRun {
    tav::ui::AppContext context;
    std::unique_ptr<tav::ui::MainWindow> window;
    explicit AppRun(const std::string& data) {
        if (!context.open(data, "")) return;
        window = std::make_unique<tav::ui::MainWindow>(context);
        context.host().setParent(window.get());
        if (!window->loadWindows()) {
            window.reset();
            return;
        }
        window->resize(1000, 700);
        window->show();
    }
    tav::ui::FileListWindow* active() const { return window ? window->activeListWindow() : nullptr; }
};

}  // namespace tavtest

#include "ui/AppContext.h"

#include <QApplication>
#include <QMessageBox>
#include <cstdlib>

#include "core/AppError.h"

namespace tav::ui {

AppContext::AppContext()
    : ini_(service_, &host_), errors_(screen_, [] { std::exit(1); }, "Tavelo") {}

bool AppContext::open(const std::string& explicitDataDir, const std::string& argv0) {
    try {
        DataDirResult dir = locateDataDir(ini_, defaultLocations(argv0), explicitDataDir);
        if (dir.dataDir.empty()) {
            QMessageBox::critical(nullptr, "Tavelo", QString::fromStdString(dir.error + "\n\nCannot continue. System stopped."));
            return false;
        }
        dataDir_ = dir.dataDir;
        ini_.setDataDir(dataDir_);
        files_ = openDataFiles(ini_);
        errors_.setErrorLog(files_.errorLog);
        return true;
    } catch (const AppError& e) {
        if (!e.isUserStop()) errors_.handle(e, ErrorPlace{"HTMLanalform_Load", "HTMLanalform", "", ""});
        return false;
    }
}

}  // namespace tav::ui

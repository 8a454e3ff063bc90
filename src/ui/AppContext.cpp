#include "ui/AppContext.h"

#include <QApplication>
#include <QMessageBox>
#include <cstdlib>

#include "core/AppError.h"
#include "ui/MessageBoxControls.h"

namespace tav::ui {

AppContext::AppContext()
    : ini_(service_, &host_), errors_(screen_, [] { std::exit(1); }, "Tavelo") {}

void AppContext::applyBoxFont() {
    std::string name = ini_.mode(kMissingEmpty).get("MB formats", "MB all Fontname");
    if (name.empty()) return;
    double size = ini_.mode(kMissingEmpty).getNum("MB formats", "MB all Size");
    bool bold = ini_.mode(kMissingEmpty).getBool("MB formats", "MB all Bold");
    bool italic = ini_.mode(kMissingEmpty).getBool("MB formats", "MB all Italic");
    host_.setBoxFont(messageBoxFont(name, size > 0 ? size : 8, bold, italic));
}

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
        applyBoxFont();
        // A font the user picks in a box is kept for the next start.
        host_.setFormatStore(&ini_);
        return true;
    } catch (const AppError& e) {
        if (!e.isUserStop()) errors_.handle(e, ErrorPlace{"HTMLanalform_Load", "HTMLanalform", "", ""});
        return false;
    }
}

}  // namespace tav::ui

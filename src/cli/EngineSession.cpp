#include "cli/EngineSession.h"

#include <ostream>

#include "core/AppError.h"

namespace tav::cli {

EngineSession::EngineSession(std::ostream& err) : err_(err), host_(err, "Tavelo"), ini_(service_, &host_) {}

bool EngineSession::open(const std::string& explicitDataDir) {
    try {
        DataDirResult dir = locateDataDir(ini_, defaultLocations(""), explicitDataDir);
        if (dir.dataDir.empty()) {
            err_ << "tavelo: " << dir.error << "\n";
            return false;
        }
        ini_.setDataDir(dir.dataDir);
        files_ = openDataFiles(ini_, false);
        return true;
    } catch (const AppError& e) {
        err_ << "tavelo: " << e.what() << " (error " << e.number() << ")\n";
        return false;
    }
}

}  // namespace tav::cli

#pragma once
#include <string>

namespace tav::ui {

// Starts the desktop program on the given data directory (empty: located
// through Dir.ini) and returns the process exit code.
int runGui(int argc, char** argv, const std::string& dataDir);

}  // namespace tav::ui

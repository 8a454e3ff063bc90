#pragma once
// The headless commands: `tavelo ini ...`, `tavelo list ...`, and so on.
#include <iosfwd>
#include <string>
#include <vector>

namespace tav::cli {

struct GlobalOptions {
    std::string dataDir;   // --data DIR; empty: located through Dir.ini
    bool version = false;  // --version
    std::vector<std::string> rest;  // the command and its arguments
};

// Takes --data and --version from anywhere before the command.
GlobalOptions parseGlobalOptions(const std::vector<std::string>& args);

// True when args name a headless command (so no display is needed).
bool isCommand(const GlobalOptions& options);

// Runs a headless command; returns the process exit code.
int runCommand(const GlobalOptions& options, std::istream& in, std::ostream& out, std::ostream& err);

}  // namespace tav::cli

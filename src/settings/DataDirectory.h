#pragma once
// Finding the main data directory and the INI files it holds.
//
// Dir.ini (beside the program, then in the user's config directory) names
// the data directory in section "Main", entry "Main Data Dir". With no
// Dir.ini at all, the first start makes the user's data directory from the
// factory set and writes Dir.ini into the config directory.
#include <string>

#include "settings/IniStore.h"

namespace tav {

struct DataLocations {
    std::string programDir;  // where the executable lies
    std::string configDir;   // the user's config directory for Tavelo
    std::string defaultDataDir;  // where a first start puts the data directory
    std::string factoryDir;  // the factory INI set
};

// The platform's places: XDG directories on Linux, %APPDATA% on Windows.
DataLocations defaultLocations(const std::string& argv0);

struct DataDirResult {
    std::string dataDir;    // empty on failure
    bool created = false;   // made from the factory set by this call
    std::string error;      // what went wrong, for the user
};

// Locates the data directory. `explicitDir` (from --data) wins; a directory
// without a main INI file is filled from the factory set first. A Dir.ini
// without the entry asks through the store's host (Cancel stops with 1066).
DataDirResult locateDataDir(IniStore& ini, const DataLocations& where, const std::string& explicitDir = {});

// Copies the factory set into `dir` without replacing any file there.
bool installFactorySet(const std::string& factoryDir, const std::string& dir, std::string* error);

// The files located at start, in their order: each is qualified and given to
// the store's alternate lists (and merged when it can be).
struct OpenedFiles {
    std::string mainIni;
    std::string savedLayoutsIni;  // LH_saved.ini
    std::string systemp;          // the temporary directory
    std::string helpDir;
    std::string errorLog;         // the ErrLog entry, qualified; empty when not set
    bool firstRun = false;        // FirstRunAfterSetup was true (and is now written false)
};

// A headless command passes firstRunSteps false, so that it leaves the
// first-run steps to the desktop program's first start.
OpenedFiles openDataFiles(IniStore& ini, bool firstRunSteps = true);

// Loads the key set supplied at setup (param/setupkey.ini) into the main file.
void loadInitialKeys(IniStore& ini, std::string& mainSpec);

}  // namespace tav

#pragma once
// The engine as a headless command sees it: an INI store on the located data
// directory, with prompts written to standard error.
#include <iosfwd>
#include <memory>
#include <string>

#include "dialogs/StderrHost.h"
#include "settings/DataDirectory.h"
#include "settings/IniStore.h"

namespace tav::cli {

class EngineSession {
public:
    explicit EngineSession(std::ostream& err);

    // Locates (or makes) the data directory and opens its files; false with
    // a message on `err` when it cannot.
    bool open(const std::string& explicitDataDir);

    IniStore& ini() { return ini_; }
    const OpenedFiles& files() const { return files_; }

private:
    std::ostream& err_;
    ProfileService service_;
    StderrHost host_;
    IniStore ini_;
    OpenedFiles files_;
};

}  // namespace tav::cli

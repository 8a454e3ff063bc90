#pragma once
// The engine as the desktop program holds it: the INI store on the data
// directory, the prompt host and the error handler. Lives on the UI thread.
#include <memory>
#include <string>

#include "dialogs/ErrorHandler.h"
#include "settings/DataDirectory.h"
#include "settings/IniStore.h"
#include "viewer/TextBlockCache.h"
#include "ui/QtErrorScreen.h"
#include "ui/QtMessageHost.h"

namespace tav::ui {

class AppContext {
public:
    AppContext();

    // Locates the data directory (or makes it from the factory set) and
    // opens its files; false with a message already shown when it cannot.
    bool open(const std::string& explicitDataDir, const std::string& argv0);

    IniStore& ini() { return ini_; }
    QtMessageHost& host() { return host_; }
    ErrorHandler& errors() { return errors_; }
    const OpenedFiles& files() const { return files_; }
    const std::string& dataDir() const { return dataDir_; }
    // The one text block cache of the program, shared by every text view.
    TextBlockCache& textCache() { return textCache_; }

private:
    // The message box font of section "MB formats".
    void applyBoxFont();

    ProfileService service_;
    QtMessageHost host_;
    IniStore ini_;
    QtErrorScreen screen_;
    ErrorHandler errors_;
    OpenedFiles files_;
    std::string dataDir_;
    TextBlockCache textCache_;
};

}  // namespace tav::ui

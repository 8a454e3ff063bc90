// The return of the last run's windows at start, with the factory copy of
// the current windows file as the last resort.
#include <cstdio>
#include <filesystem>
#include <functional>
#include <system_error>

#include "frame/WindowStore.h"
#include "settings/IniStore.h"
#include "settings/ProfileService.h"

namespace tav {

namespace {

const std::string CR = "\r";

using MakeWindow = std::function<bool(const std::string& section, bool first)>;

// The current list, then the last unloaded window. The first window that
// comes up is the one that fills its list at once.
int attempt(WindowStore& store, const MakeWindow& makeWindow) {
    int loaded = 0;
    for (const std::string& section : store.currentWindows())
        if (makeWindow(section, loaded == 0)) ++loaded;
    if (loaded > 0) return loaded;
    const std::string last = store.lastUnloaded();
    if (!last.empty() && makeWindow(last, true)) return 1;
    return 0;
}

// Copies the factory file over the current windows file, atomically.
bool copyFactory(const std::string& factoryCopy, const std::string& target) {
    std::error_code ec;
    if (factoryCopy.empty() || !std::filesystem::is_regular_file(factoryCopy, ec)) return false;
    std::string bytes;
    {
        std::FILE* f = std::fopen(factoryCopy.c_str(), "rb");
        if (!f) return false;
        char buf[8192];
        size_t n;
        while ((n = std::fread(buf, 1, sizeof buf, f)) > 0) bytes.append(buf, n);
        const bool bad = std::ferror(f) != 0;
        std::fclose(f);
        if (bad) return false;
    }
    return ProfileService::writeFileAtomic(target, bytes);
}

}  // namespace

WindowLoadResult LoadFileListWindows(WindowStore& store, const std::string& factoryCopy,
                                     const MakeWindow& makeWindow) {
    WindowLoadResult result;
    result.loaded = attempt(store, makeWindow);
    if (result.loaded > 0) return result;

    IniStore& ini = store.ini();
    const std::string spec = ini.roleFile(IniRole::Currwin).empty() ? std::string(kAutoFile)
                                                                     : ini.roleFile(IniRole::Currwin);
    const std::string target = ini.pathOf(kWindowsIndexSection, spec);
    ini.flush(target);
    if (copyFactory(factoryCopy, target)) {
        result.recovered = true;
        ini.flush(target);
        result.loaded = attempt(store, makeWindow);
    }
    result.failed = result.loaded == 0;
    return result;
}

std::string windowLoadFailureMessage(std::string_view appName) {
    const std::string name(appName);
    return "*** Error loading File List windows. Automatic recovery failed. ***" + CR + CR +
           "This error is most likely to be caused by either an unstable windows session or after another "
           "application (most likely to be Windows) has corrupted your configuration files" +
           CR + CR + "Try each of the following in order to recover:" + CR + CR +
           "1. Restart windows and try to start " + name + " again." + CR +
           "2. If that doesn't work re-install " + name + CR +
           "3. If you still have problems, please contact technical support.";
}

}  // namespace tav

#include "settings/DataDirectory.h"

#include <cstdlib>
#include <filesystem>

#include "core/AppError.h"
#include "core/ListText.h"

namespace fs = std::filesystem;

namespace tav {

namespace {
std::string env(const char* name) {
    const char* v = std::getenv(name);
    return v ? std::string(v) : std::string();
}

std::string trimDirName(std::string dir) {
    while (!dir.empty() && (dir.back() == ' ' || dir.back() == '\t')) dir.pop_back();
    if (dir.size() > 1 && (dir.back() == '\\' || dir.back() == '/')) dir.pop_back();
    return dir;
}

std::string programDirOf(const std::string& argv0) {
    std::error_code ec;
#ifndef _WIN32
    fs::path self = fs::read_symlink("/proc/self/exe", ec);
    if (!ec) return self.parent_path().string();
#endif
    fs::path p = fs::absolute(argv0, ec);
    return p.parent_path().string();
}

bool hasMainIni(const std::string& dir) {
    std::error_code ec;
    return fs::is_regular_file(fs::path(dir) / "Tavelo.ini", ec);
}
}  // namespace

DataLocations defaultLocations(const std::string& argv0) {
    DataLocations w;
    w.programDir = programDirOf(argv0);
#ifdef _WIN32
    std::string appData = env("APPDATA");
    w.configDir = (fs::path(appData) / "Tavelo").string();
    w.defaultDataDir = (fs::path(appData) / "Tavelo" / "Data").string();
#else
    std::string home = env("HOME");
    std::string config = env("XDG_CONFIG_HOME");
    std::string data = env("XDG_DATA_HOME");
    w.configDir = ((config.empty() ? fs::path(home) / ".config" : fs::path(config)) / "tavelo").string();
    w.defaultDataDir = ((data.empty() ? fs::path(home) / ".local" / "share" : fs::path(data)) / "tavelo").string();
#endif
    std::string fromEnv = env("TAVELO_FACTORY_DIR");
    std::vector<fs::path> candidates;
    if (!fromEnv.empty()) candidates.emplace_back(fromEnv);
    candidates.push_back(fs::path(w.programDir) / "data");
    candidates.push_back(fs::path(w.programDir) / ".." / "share" / "tavelo" / "data");
#ifdef TAVELO_SOURCE_DATA
    candidates.emplace_back(TAVELO_SOURCE_DATA);
#endif
    for (const auto& c : candidates) {
        if (hasMainIni(c.string())) {
            w.factoryDir = fs::weakly_canonical(c).string();
            break;
        }
    }
    return w;
}

bool installFactorySet(const std::string& factoryDir, const std::string& dir, std::string* error) {
    std::error_code ec;
    if (factoryDir.empty() || !hasMainIni(factoryDir)) {
        if (error) *error = "The factory settings of Tavelo were not found (looked for data/Tavelo.ini).";
        return false;
    }
    fs::create_directories(dir, ec);
    if (ec) {
        if (error) *error = "Cannot make the data directory " + dir + ": " + ec.message();
        return false;
    }
    fs::copy(factoryDir, dir, fs::copy_options::recursive | fs::copy_options::skip_existing, ec);
    if (ec) {
        if (error) *error = "Cannot copy the factory settings into " + dir + ": " + ec.message();
        return false;
    }
    return true;
}

DataDirResult locateDataDir(IniStore& ini, const DataLocations& where, const std::string& explicitDir) {
    DataDirResult result;
    std::string dir = trimDirName(explicitDir);
    if (dir.empty()) {
        for (const std::string& base : {where.programDir, where.configDir}) {
            std::string dirIni = (fs::path(base) / "Dir.ini").string();
            std::error_code ec;
            if (base.empty() || !fs::is_regular_file(dirIni, ec)) continue;
            // A Dir.ini without the entry asks, before anything else is known.
            dir = trimDirName(ini.mode(kMissingPrompt).get("Main", "Main Data Dir", dirIni));
            if (dir.empty()) {
                result.error = "No data directory is set in " + dirIni;
                return result;
            }
            break;
        }
    }
    if (dir.empty()) {
        dir = where.defaultDataDir;
        std::error_code ec;
        fs::create_directories(where.configDir, ec);
        std::string dirIni = (fs::path(where.configDir) / "Dir.ini").string();
        std::string spec = dirIni;
        ini.put("Main", "Main Data Dir", dir, spec);
        if (ini.writeFailed) {
            result.error = "Cannot write " + dirIni;
            return result;
        }
    }
    if (!hasMainIni(dir)) {
        if (!installFactorySet(where.factoryDir, dir, &result.error)) return result;
        result.created = true;
    }
    result.dataDir = fs::absolute(dir).lexically_normal().string();
    result.dataDir = trimDirName(result.dataDir);
    return result;
}

// The first key set: section "Keys" of param/setupkey.ini over that of the main file.
void loadInitialKeys(IniStore& ini, std::string& mainSpec) {
    std::string setup = ini.qualify((fs::path("param") / "setupkey.ini").string());
    std::error_code ec;
    if (!fs::is_regular_file(setup, ec)) return;
    ini.service().beginBatch();
    for (const std::string& entry : ini.service().entryNames(setup, "Keys")) {
        std::string value = ini.mode(kMissingEmpty).get("Keys", entry, setup);
        ini.put("Keys", entry, value, mainSpec);
    }
    ini.service().endBatch();
}

OpenedFiles openDataFiles(IniStore& ini, bool firstRunSteps) {
    OpenedFiles files;
    files.mainIni = ini.qualify("Tavelo.ini");
    ProfileService::removeStaleTemporaries(ini.dataDir());
    std::string mainSpec = files.mainIni;
    ini.openAltList(mainSpec);
    ini.setRoleFile(IniRole::Main, mainSpec);

    static const IniRole order[] = {IniRole::XParam, IniRole::Currwin, IniRole::Asso, IniRole::QMove,
                                    IniRole::Cols,   IniRole::SkipText, IniRole::Tips};
    auto locate = [&](IniRole role) {
        std::string name = ini.mode(kMissingNotFound).get("Main", roleEntry(role), mainSpec);
        if (name == kNotFoundText || name.empty()) {
            ini.setRoleFile(role, mainSpec);
            return;
        }
        std::string spec = ini.qualify(name);
        ini.openAltList(spec);
        ini.setRoleFile(role, spec);
    };
    for (IniRole role : order) locate(role);
    files.savedLayoutsIni = ini.qualify("LH_saved.ini");
    locate(IniRole::Hef);

    files.systemp = ini.qualify("Systemp");
    files.helpDir = ini.qualify("help");
    std::string log = ini.mode(kMissingNotFound).get("Main", "ErrLog", mainSpec);
    files.errorLog = (log == kNotFoundText || log.empty()) ? std::string() : ini.qualify(log);

    std::error_code ec;
    fs::create_directories(files.systemp, ec);
    if (ec) raiseError(9421, "**backups/temp**");

    // Written false before anything that can fail, so a crash in the first
    // start does not run the first-run steps again.
    if (firstRunSteps && ini.mode(kMissingEmpty).getBool("Main", "FirstRunAfterSetup", mainSpec)) {
        ini.put("Main", "FirstRunAfterSetup", "0", mainSpec);
        files.firstRun = true;
        loadInitialKeys(ini, mainSpec);
    }
    return files;
}

}  // namespace tav

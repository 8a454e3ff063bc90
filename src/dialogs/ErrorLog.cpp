#include "dialogs/ErrorLog.h"

#include <filesystem>
#include <fstream>

#include "core/ListText.h"
#include "dialogs/FsPath.h"

namespace tav {

std::string fallbackErrorLog() {
    namespace fs = std::filesystem;
    std::error_code ec;
#ifdef _WIN32
    if (fs::is_directory("C:\\", ec)) return "C:\\TavErr.LOG";
#endif
    fs::path dir = fs::temp_directory_path(ec);
    if (ec || dir.empty()) {
#ifdef _WIN32
        dir = "C:\\";
#else
        dir = "/tmp";
#endif
    }
    return fromFsPath(dir / "TavErr.LOG");
}

std::string fallbackLogNote(std::string_view fallbackPath) {
    return " Also: gPAFN_Errorlog not set, error log written to " + std::string(fallbackPath) + ".";
}

std::string errorLogName(std::string_view setting) {
    if (setting == kNotFoundText) return {};
    return std::string(setting);
}

bool appendErrorLog(const std::string& path, const std::vector<std::string>& lines) {
    if (path.empty()) return false;
    try {
        std::ofstream out(toFsPath(path), std::ios::app);
        if (!out) return false;
        for (const auto& line : lines) out << line << '\n';
        out.flush();
        return static_cast<bool>(out);
    } catch (...) {
        return false;
    }
}

}  // namespace tav

#include "core/UniqueName.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace tav {

namespace {
bool nameTaken(const fs::path& p) {
    std::error_code ec;
    return fs::exists(fs::symlink_status(p, ec));
}

// Counts the name up by one; false when every position has wrapped.
bool countUp(std::string& base) {
    for (size_t i = base.size(); i-- > 0;) {
        char& c = base[i];
        if (c >= '0' && c < '9') { ++c; return true; }
        if (c == '9') { c = 'a'; return true; }
        if (c >= 'a' && c < 'z') { ++c; return true; }
        if (c >= 'A' && c < 'Z') { c = static_cast<char>(c - 'A' + 'a' + 1); return true; }
        if (c == 'z' || c == 'Z') { c = '0'; continue; }   // wrap and carry
        c = '0';                                           // not a digit or letter: restart
        return true;
    }
    return false;
}
}  // namespace

std::string uniqueFileName(const std::string& path, std::string* error) {
    fs::path p(path);
    if (!nameTaken(p)) return path;
    std::string stem = p.stem().string(), ext = p.extension().string();
    std::string base = (stem + "00000000").substr(0, 8);
    const fs::path dir = p.parent_path();
    while (true) {
        if (!countUp(base)) {
            if (error) *error = "All filenames used in this dir.";
            return {};
        }
        fs::path candidate = dir / (base + ext);
        if (!nameTaken(candidate)) return candidate.string();
    }
}

}  // namespace tav

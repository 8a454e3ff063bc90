#include "dialogs/PathSplit.h"

#include <cctype>

namespace tav {

namespace {

size_t lastSep(std::string_view s) { return s.rfind(kDirSep); }

std::string_view filePart(std::string_view pafn) {
    size_t cut = lastSep(pafn);
    return cut == std::string_view::npos ? pafn : pafn.substr(cut + 1);
}

// Length of the root at the start of a full path; 0 for a relative name.
size_t rootLength(std::string_view s) {
#ifdef _WIN32
    if (s.size() >= 3 && s[1] == ':' && s[2] == kDirSep) return 3;
    return 0;
#else
    return !s.empty() && s[0] == kDirSep ? 1 : 0;
#endif
}

}  // namespace

std::string withFinalSep(std::string_view name) {
    std::string out(name);
    if (out.empty() || out.back() != kDirSep) out += kDirSep;
    return out;
}

std::string DriveOf(std::string_view pafn) { return std::string(pafn.substr(0, rootLength(pafn))); }

std::string DirOf(std::string_view pafn) {
    size_t cut = lastSep(pafn);
    return cut == std::string_view::npos ? std::string() : std::string(pafn.substr(0, cut + 1));
}

std::string FileOf(std::string_view pafn) { return std::string(filePart(pafn)); }

std::string BaseOf(std::string_view pafn) {
    std::string_view file = filePart(pafn);
    size_t dot = file.rfind('.');
    return std::string(dot == std::string_view::npos ? file : file.substr(0, dot));
}

std::string TypeOf(std::string_view pafn) {
    std::string_view file = filePart(pafn);
    size_t dot = file.rfind('.');
    return dot == std::string_view::npos ? std::string() : std::string(file.substr(dot + 1));
}

std::string ParentDirOf(std::string_view dir) {
    size_t root = rootLength(dir);
    std::string_view d = dir;
    if (d.size() > root && d.back() == kDirSep) d.remove_suffix(1);
    if (d.size() <= root) return {};
    size_t cut = lastSep(d);
    if (cut == std::string_view::npos) return {};
    return std::string(d.substr(0, cut + 1));
}

bool isDriveLetterPath(std::string_view name) {
#ifdef _WIN32
    return name.size() >= 3 && std::isalpha(static_cast<unsigned char>(name[0])) && name[1] == ':' &&
           name[2] == kDirSep;
#else
    return rootLength(name) > 0;
#endif
}

bool isAnyDrivePath(std::string_view name) {
#ifdef _WIN32
    return name.size() >= 3 && name[1] == ':' && name[2] == kDirSep;
#else
    return rootLength(name) > 0;
#endif
}

bool hasDrivePattern(std::string_view name) {
#ifdef _WIN32
    return name.find(":\\") != std::string_view::npos;
#else
    return rootLength(name) > 0;
#endif
}

bool isDotRelative(std::string_view name) {
    return name.size() >= 2 && name[0] == '.' && name[1] == kDirSep;
}

bool isDotDotRelative(std::string_view name) {
    return name.size() >= 3 && name[0] == '.' && name[1] == '.' && name[2] == kDirSep;
}

std::string ExpandRelative(std::string_view name, std::string_view current) {
    if (!(isDotRelative(name) || isDotDotRelative(name) || name == "." || name == "..")) return std::string(name);
    std::string dir = withFinalSep(current);
    while (true) {
        if (isDotRelative(name)) {
            name.remove_prefix(2);
        } else if (isDotDotRelative(name)) {
            std::string parent = ParentDirOf(dir);
            if (!parent.empty()) dir = parent;
            name.remove_prefix(3);
        } else if (name == ".") {
            name = {};
        } else if (name == "..") {
            std::string parent = ParentDirOf(dir);
            if (!parent.empty()) dir = parent;
            name = {};
        } else {
            break;
        }
    }
    return dir + std::string(name);
}

std::string DataPafn(std::string_view name, std::string_view mainDataDir) {
    if (hasDrivePattern(name)) return std::string(name);
    return withFinalSep(mainDataDir) + std::string(name);
}

}  // namespace tav

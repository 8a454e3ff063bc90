#include "dialogs/FindOnPath.h"

#include <cstdlib>
#include <filesystem>

#include "dialogs/FsPath.h"
#include "dialogs/PathSplit.h"

namespace tav {

namespace {

#ifdef _WIN32
constexpr char kPathListSep = ';';
#else
constexpr char kPathListSep = ':';
#endif

}  // namespace

PathSearchResult FindOnPath(std::string_view name, std::optional<std::string> pathList) {
    PathSearchResult result;
    if (name.empty() || name.back() == kDirSep) {
        result.outcome = PathSearch::BadName;
        result.message = "Must include file name after dir spec.";
        return result;
    }
    if (!pathList) {
        if (const char* env = std::getenv("PATH")) pathList = std::string(env);
    }
    if (!pathList || pathList->empty()) {
        result.outcome = PathSearch::CannotCheck;
        result.message =
            "It is not possible to check whether this file is contained in a directory specified in path "
            "statement. Cannot open PATH\rDo you wish to specify full path for file now.";
        return result;
    }
    std::string_view rest = *pathList;
    while (true) {
        size_t cut = rest.find(kPathListSep);
        std::string_view dir = rest.substr(0, cut);
        while (!dir.empty() && dir.front() == ' ') dir.remove_prefix(1);
        if (!dir.empty() && !dir.starts_with("%PATH") && !dir.starts_with("$PATH")) {
            std::string candidate = withFinalSep(dir) + std::string(name);
            std::error_code ec;
            if (std::filesystem::is_regular_file(toFsPath(candidate), ec)) {
                result.outcome = PathSearch::Found;
                result.found = candidate;
                return result;
            }
        }
        if (cut == std::string_view::npos) break;
        rest.remove_prefix(cut + 1);
    }
    result.outcome = PathSearch::NotFound;
    result.message =
        "This file is not contained in any directory specified in the path statement. Please specify full path "
        "for file.";
    return result;
}

}  // namespace tav

#pragma once
// Finds a program given without a path in the directories of the search
// path (the PATH environment variable).
#include <optional>
#include <string>
#include <string_view>

namespace tav {

enum class PathSearch {
    Found,       // `found` holds the full name
    NotFound,    // no directory of the path has it
    CannotCheck, // there is no search path to look in; `message` asks for a full path
    BadName,     // the name ends in a separator
};

struct PathSearchResult {
    PathSearch outcome = PathSearch::NotFound;
    std::string found;
    std::string message;  // lines joined with CR; empty when found
};

// pathList: the search path as the environment gives it (entries separated
// by ":" on POSIX, ";" on Windows); none: the PATH variable is read.
PathSearchResult FindOnPath(std::string_view name, std::optional<std::string> pathList = std::nullopt);

}  // namespace tav

#pragma once
// The display forms of criteria: the one-line form shown after "Find: >>",
// the size and date text, the statement of a file search, and the legend
// that explains the one-line form.
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "find/FileFindRecord.h"

namespace tav {

// (text) WW MC -(exclude), or the text alone when there are no options.
// E.g. (Smith) WW -L(REM) +R20(Peter).
std::string criteriaAsText(std::string_view text, std::string_view exclude, bool matchCase, bool wholeWord,
                           std::string_view complex, std::string_view section);

// The complex criteria alone: or(..) -(..) -L(..) ... +R20(..) [Restrict Line(..)].
std::string complexAsText(std::string_view complex, std::string_view section);

using SizeFormat = std::function<std::string(int64_t bytes)>;
using DateFormat = std::function<std::string(int64_t dayNumber)>;

// Day numbers count from 30 December 1899 (day 0). The plain forms used
// when the caller gives none: digits, and dd/mm/yyyy.
std::string plainSizeText(int64_t bytes);
std::string plainDateText(int64_t dayNumber);

// "Sz > 10, Sz < 20, M: From a To b"; empty without size or date criteria.
std::string dateSizeAsText(const FileFindRecord& r, const SizeFormat& size = plainSizeText,
                           const DateFormat& date = plainDateText);

// The lines of a file search statement joined by `lineBreak`. `lookIn` is
// the directory or "|" list of directories searched in mode 0.
std::string fileFindAsText(const FileFindRecord& r, std::string_view lookIn, std::string_view lineBreak,
                           const SizeFormat& size = plainSizeText, const DateFormat& date = plainDateText);

inline constexpr std::string_view kLookInAllListed = "Current List (All Files Listed)";
inline constexpr std::string_view kLookInNamedListed = "Current List (Only Files Named ...)";

// The legend: lines above the grid, and its rows (left cell, right cell).
struct Legend {
    std::vector<std::string> heading;
    std::vector<std::pair<std::string, std::string>> rows;
    int leftWidth = 1355, rightWidth = 6000;
    int boxWidth = 7500, boxHeight = 3865;
};
const Legend& findLegend();

}  // namespace tav
